// The merge of a settings tree into what a file already holds: elements with the same name and
// the same key attribute are updated in place, new ones are appended, everything else stays.
#pragma once

#include <boost/property_tree/ptree.hpp>

#include <string>

namespace ovklib {

/// Merges `source` into `target`. Paths are '/'-separated, so element names may hold dots.
/// With an empty `keyAttribute`, elements of the same name merge into the first one.
void MergePropertyTree(boost::property_tree::ptree& target,
                       const boost::property_tree::ptree& source, const std::string& keyAttribute);

}  // namespace ovklib
