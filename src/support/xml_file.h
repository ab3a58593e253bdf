// XML files of property trees that another writer may hold for a moment: every access retries
// while the file cannot be had, and a write with a key attribute merges into what the file
// holds, read-merge-write as one exclusive step. The asynchronous forms save on a thread of
// their own, from a private copy, and report nothing.
#pragma once

#include <boost/property_tree/ptree.hpp>

#include <string>

namespace ovklib {

class CXmlFile {
public:
    virtual ~CXmlFile() = default;

    /// The time limit of every access; (limit + 9) / 10 + 1 tries, 10 ms apart.
    static constexpr int kTimeLimitMs = 5000;

    /// Fills `tree` on success; a missing or corrupt file gives false and leaves it unchanged.
    static bool Read(const std::wstring& file, boost::property_tree::ptree& tree,
                     int limitMs = kTimeLimitMs);
    /// Replaces the file's content with `tree`.
    static bool Write(const std::wstring& file, const boost::property_tree::ptree& tree,
                      int indentation, int limitMs = kTimeLimitMs);
    /// Merges `tree` into the file's tree by `keyAttribute`; a corrupt file counts as empty.
    static bool Write(const std::wstring& file, const boost::property_tree::ptree& tree,
                      const std::string& keyAttribute, int indentation, int limitMs = kTimeLimitMs);
    /// The same on a detached thread of their own.
    static void WriteAsync(const std::wstring& file, const boost::property_tree::ptree& tree,
                           int indentation);
    static void WriteAsync(const std::wstring& file, const boost::property_tree::ptree& tree,
                           const std::string& keyAttribute, int indentation);
};

}  // namespace ovklib
