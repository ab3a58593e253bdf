// Settings files on disk: merge on write, corrupt and missing files, a writer that holds it.
#include "support/halvane_folders.h"
#include "support/locked_file.h"
#include "support/os.h"
#include "support/xml_file.h"

#include <boost/property_tree/xml_parser.hpp>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using boost::property_tree::ptree;

ptree Tree(const std::string& xml) {
    ptree tree;
    std::istringstream in(xml);
    boost::property_tree::read_xml(in, tree, 6);
    return tree;
}

class XmlFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_path = fs::temp_directory_path() / "qvx_xml_file_test.config";
        fs::remove(m_path);
    }
    void TearDown() override { fs::remove(m_path); }
    std::wstring File() const { return m_path.wstring(); }
    fs::path m_path;
};

TEST_F(XmlFileTest, KeyedWriteCreatesThenMergesAndReadGivesItBack) {
    ASSERT_TRUE(ovklib::CXmlFile::Write(File(), Tree("<a><s n=\"x\"><v>0</v></s></a>"), "n", 2));
    ASSERT_TRUE(ovklib::CXmlFile::Write(File(), Tree("<a><s n=\"y\"><v>2</v></s></a>"), "n", 2));
    ASSERT_TRUE(ovklib::CXmlFile::Write(File(), Tree("<a><s n=\"x\"><v>1</v></s></a>"), "n", 2));
    ptree read;
    ASSERT_TRUE(ovklib::CXmlFile::Read(File(), read));
    auto& a = read.get_child("a");
    ASSERT_EQ(a.size(), 2u);
    EXPECT_EQ(a.front().second.get<std::string>("v"), "1");
    EXPECT_EQ(a.back().second.get<std::string>("v"), "2");
}

TEST_F(XmlFileTest, CorruptFileFailsReadButIsOverwrittenByAKeyedWrite) {
    std::ofstream(m_path) << "<a><unclosed>";
    ptree keep = Tree("<k>1</k>");
    EXPECT_FALSE(ovklib::CXmlFile::Read(File(), keep));
    EXPECT_EQ(keep.get<int>("k"), 1) << "the caller's tree is unchanged";
    ASSERT_TRUE(ovklib::CXmlFile::Write(File(), Tree("<a><v>3</v></a>"), "n", 0));
    ptree read;
    ASSERT_TRUE(ovklib::CXmlFile::Read(File(), read));
    EXPECT_EQ(read.get<int>("a.v"), 3);
}

TEST_F(XmlFileTest, MissingFileFailsReadAndAnEmptyFileIsFilledAsNew) {
    ptree tree;
    EXPECT_FALSE(ovklib::CXmlFile::Read(File(), tree));
    std::ofstream(m_path).close();
    ASSERT_TRUE(ovklib::CXmlFile::Write(File(), Tree("<a><v>4</v></a>"), "n", 1));
    ASSERT_TRUE(ovklib::CXmlFile::Read(File(), tree));
    EXPECT_EQ(tree.get<int>("a.v"), 4);
}

TEST_F(XmlFileTest, AWriterThatHoldsTheFileMakesOthersGiveUpAfterTheLimit) {
    auto holder = ovklib::CLockedFile::OpenForUpdate(File());
    ASSERT_TRUE(holder);
    EXPECT_FALSE(ovklib::CXmlFile::Write(File(), Tree("<a/>"), "n", 0, /*limitMs=*/30));
    EXPECT_FALSE(ovklib::CXmlFile::Write(File(), Tree("<a/>"), 0, /*limitMs=*/0))
        << "a limit of 0 still makes one try";
    holder.reset();
    EXPECT_TRUE(ovklib::CXmlFile::Write(File(), Tree("<a/>"), 0, 0));
}

}  // namespace

namespace {

TEST(HalvaneFolderTest, LocalAppDataFolderExistsAndEndsInTheSubFolder) {
#ifndef _WIN32
    if (!qvx::os::GetEnv(L"HOME")) GTEST_SKIP() << "no home folder in this environment";
#endif
    std::wstring folder = ovklib::GetHalvaneLocalAppDataFolder();
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(folder)));
    EXPECT_EQ(std::filesystem::path(folder).filename(), "Halvane");
}

}  // namespace
