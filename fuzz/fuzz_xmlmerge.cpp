// Any bytes as XML, merged into a settings-like tree and into itself, with and without a key.
#include "support/xml_merge.h"

#include <boost/property_tree/xml_parser.hpp>

#include <cstdint>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    boost::property_tree::ptree source;
    try {
        std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
        boost::property_tree::read_xml(in, source, 6);
    } catch (const std::exception&) {
        return 0;  // corrupt XML counts as empty before any merge
    }
    boost::property_tree::ptree target = source;
    ovklib::MergePropertyTree(target, source, "n");
    ovklib::MergePropertyTree(target, source, "");
    return 0;
}
