#include "support/xml_merge.h"

#include <boost/property_tree/xml_parser.hpp>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using boost::property_tree::ptree;

ptree Parse(const std::string& xml) {
    ptree tree;
    std::istringstream in(xml);
    boost::property_tree::read_xml(in, tree, 6);
    return tree;
}

std::string Render(const ptree& tree) {
    std::ostringstream out;
    boost::property_tree::write_xml(out, tree);
    std::string text = out.str();
    return text.substr(text.find("?>") + 2);
}

std::string Merged(const std::string& target, const std::string& source, const std::string& key) {
    ptree t = Parse(target);
    ovklib::MergePropertyTree(t, Parse(source), key);
    return Render(t);
}

TEST(XmlMergeTest, SameKeyUpdatesInPlaceAndOthersStay) {
    EXPECT_EQ(Merged("<a><s n=\"x\"><v>0</v></s><s n=\"y\"><v>2</v></s><b/></a>",
                     "<a><s n=\"x\"><v>1</v></s></a>", "n"),
              Render(Parse("<a><s n=\"x\"><v>1</v></s><s n=\"y\"><v>2</v></s><b/></a>")));
}

TEST(XmlMergeTest, NewKeyIsAppendedBehindTheLastChild) {
    EXPECT_EQ(Merged("<a><s n=\"x\"><v>0</v></s><b/></a>", "<a><s n=\"z\"><v>9</v></s></a>", "n"),
              Render(Parse("<a><s n=\"x\"><v>0</v></s><b/><s n=\"z\"><v>9</v></s></a>")));
}

TEST(XmlMergeTest, EmptyKeyMergesIntoTheFirstOfTheName) {
    EXPECT_EQ(Merged("<a><s><v>0</v></s><s><v>2</v></s></a>", "<a><s><v>1</v></s></a>", ""),
              Render(Parse("<a><s><v>1</v></s><s><v>2</v></s></a>")));
}

TEST(XmlMergeTest, EmptyTargetTakesTheWholeTreeAndDottedNamesWork) {
    ptree empty;
    ovklib::MergePropertyTree(empty, Parse("<a><b.c n=\"1\"><v>x</v></b.c></a>"), "n");
    EXPECT_EQ(empty.get<std::string>(ptree::path_type("a/b.c/v", '/')), "x");
    EXPECT_EQ(Merged("<a><b.c><v>0</v></b.c></a>", "<a><b.c><v>5</v></b.c></a>", "n"),
              Render(Parse("<a><b.c><v>5</v></b.c></a>")));
}

}  // namespace
