#include "support/xml_file.h"

#include "support/locked_file.h"
#include "support/os.h"
#include "support/xml_merge.h"

#include <boost/property_tree/xml_parser.hpp>

#include <chrono>
#include <locale>
#include <memory>
#include <sstream>
#include <thread>

namespace ovklib {
namespace {

using boost::property_tree::ptree;
constexpr int kParseFlags = boost::property_tree::xml_parser::no_comments |
                            boost::property_tree::xml_parser::trim_whitespace;

int Tries(int limitMs) { return (limitMs + 9) / 10 + 1; }
void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(10)); }

std::string Render(const ptree& tree, int indentation) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    boost::property_tree::write_xml(
        out, tree,
        boost::property_tree::xml_writer_make_settings<std::string>(
            ' ', static_cast<std::size_t>(indentation > 0 ? indentation : 0), "utf-8"));
    return out.str();
}

bool Parse(const std::string& text, ptree& tree) {
    try {
        std::istringstream in(text);
        in.imbue(std::locale::classic());
        boost::property_tree::read_xml(in, tree, kParseFlags);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

std::unique_ptr<CLockedFile> OpenForUpdate(const std::wstring& file, int limitMs) {
    for (int i = 0; i < Tries(limitMs); ++i) {
        Pause();  // also before the first try
        if (auto locked = CLockedFile::OpenForUpdate(file)) return locked;
    }
    return nullptr;
}

}  // namespace

bool CXmlFile::Read(const std::wstring& file, ptree& tree, int limitMs) {
    try {
        std::unique_ptr<CLockedFile> locked;
        for (int i = 0; i < Tries(limitMs) && !locked; ++i) {
            if (i > 0) {
                Pause();
                // Waiting for a file that is not there serves no purpose.
                if (!qvx::os::StatFile(file)) return false;
            }
            locked = CLockedFile::OpenForRead(file);
        }
        std::string text;
        ptree fresh;
        if (!locked || !locked->ReadAll(text) || !Parse(text, fresh)) return false;
        tree.swap(fresh);
        return true;
    } catch (...) {
        return false;
    }
}

bool CXmlFile::Write(const std::wstring& file, const ptree& tree, int indentation, int limitMs) {
    auto locked = OpenForUpdate(file, limitMs);
    return locked && locked->ReplaceAll(Render(tree, indentation));
}

bool CXmlFile::Write(const std::wstring& file, const ptree& tree, const std::string& keyAttribute,
                     int indentation, int limitMs) {
    auto locked = OpenForUpdate(file, limitMs);
    if (!locked) return false;
    ptree merged;
    std::string text;
    // A corrupt file counts as empty, and its content is lost with this write.
    if (locked->ReadAll(text) && !text.empty() && !Parse(text, merged)) merged.clear();
    MergePropertyTree(merged, tree, keyAttribute);
    return locked->ReplaceAll(Render(merged, indentation));
}

void CXmlFile::WriteAsync(const std::wstring& file, const ptree& tree, int indentation) {
    auto copy = std::make_shared<ptree>(tree);
    std::thread([file, copy, indentation] {
        try {
            Write(file, *copy, indentation);
        } catch (...) {
        }
    }).detach();
}

void CXmlFile::WriteAsync(const std::wstring& file, const ptree& tree,
                          const std::string& keyAttribute, int indentation) {
    auto copy = std::make_shared<ptree>(tree);
    std::thread([file, copy, keyAttribute, indentation] {
        try {
            Write(file, *copy, keyAttribute, indentation);
        } catch (...) {
        }
    }).detach();
}

}  // namespace ovklib
