#include "support/replace_file.h"

#include "common/thrown_text.h"

#include <QTemporaryDir>
#include <filesystem>
#include <gtest/gtest.h>

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace lumoplot {
namespace {

std::vector<std::uint8_t> BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

class ReplaceFileTest : public testing::Test {
protected:
    std::string NameOf(const char* file) {
        return m_folder.filePath(QString::fromLatin1(file)).toStdString();
    }
    QTemporaryDir m_folder;
};

TEST_F(ReplaceFileTest, AnExistingFileIsReplacedAndNothingElseIsLeft) {
    const std::string name = NameOf("plot.ltp");
    ReplaceFile(name, BytesOf("first"));
    ReplaceFile(name, BytesOf("second"));
    EXPECT_EQ(ReadWholeFile(name), BytesOf("second"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.path().toStdString()), {}), 1);
}

TEST_F(ReplaceFileTest, ALinkKeepsPointingAtItsFile) {
    std::error_code error;
    std::filesystem::create_symlink("real", NameOf("link"), error);
    if (error) GTEST_SKIP() << "no links on this file system";
    ReplaceFile(NameOf("real"), BytesOf("old"));
    ReplaceFile(NameOf("link"), BytesOf("new"));
    EXPECT_TRUE(std::filesystem::is_symlink(NameOf("link")));
    EXPECT_EQ(ReadWholeFile(NameOf("real")), BytesOf("new"));
}

TEST_F(ReplaceFileTest, ALinkThatLeadsNowhereIsSaidToDoSo) {
    std::error_code error;
    std::filesystem::create_symlink("no folder/file", NameOf("link"), error);
    if (error) GTEST_SKIP() << "no links on this file system";
    const std::string text = ThrownText<EFileError>([&] { ReplaceFile(NameOf("link"), BytesOf("new")); });
    EXPECT_NE(text.find("its folder does not exist"), std::string::npos) << text;
}

TEST_F(ReplaceFileTest, ALinkMayNameAFileThatIsNotThereYetAndAFileMayHaveTwoNames) {
    std::error_code error;
    std::filesystem::create_symlink("later", NameOf("link"), error);
    if (error) GTEST_SKIP() << "no links on this file system";
    ReplaceFile(NameOf("link"), BytesOf("first"));
    EXPECT_EQ(ReadWholeFile(NameOf("later")), BytesOf("first"));
    std::filesystem::create_hard_link(NameOf("later"), NameOf("second name"));
    ReplaceFile(NameOf("later"), BytesOf("new"));
    EXPECT_EQ(ReadWholeFile(NameOf("second name")), BytesOf("new"));
}

TEST_F(ReplaceFileTest, NamesMayBeAsLongAsTheSystemTakesThem) {
    for (const std::size_t length : {1, 250, 251, 255}) {
        const std::string name = NameOf(std::string(length, 'n').c_str());
        ReplaceFile(name, BytesOf("first"));
        ReplaceFile(name, BytesOf("second"));
        EXPECT_EQ(ReadWholeFile(name), BytesOf("second")) << length;
    }
}

#if !defined(_WIN32)
TEST_F(ReplaceFileTest, WhatIsProtectedStaysAndAWritableFileInAProtectedFolderIsReplaced) {
    using std::filesystem::perms;
    const std::string name = NameOf("plot.ltp");
    const std::string locked = NameOf("protected.ltp");
    const std::string folder = m_folder.path().toStdString();
    ReplaceFile(name, BytesOf("a longer old content"));
    ReplaceFile(locked, BytesOf("old"));
    const bool isRoot = geteuid() == 0; // whom no permission holds back
    if (isRoot && (chown(folder.c_str(), 65534, 65534) != 0 || chown(locked.c_str(), 65534, 65534) != 0 ||
                   seteuid(65534) != 0))
        GTEST_SKIP() << "no other user";
    std::filesystem::permissions(locked, static_cast<perms>(0444));
    const auto text = ThrownText<EFileError>([&] { ReplaceFile(locked, BytesOf("new")); });
    EXPECT_TRUE(text.ends_with("it is protected against writing. Choose another name")) << text;
    EXPECT_EQ(ReadWholeFile(locked), BytesOf("old"));
    EXPECT_TRUE(!isRoot || seteuid(0) == 0);
    std::filesystem::permissions(name, static_cast<perms>(0666));
    std::filesystem::permissions(folder, static_cast<perms>(0555));
    EXPECT_TRUE(!isRoot || seteuid(65534) == 0);
    EXPECT_NO_THROW(ReplaceFile(name, BytesOf("new")));
    EXPECT_THROW(ReplaceFile(NameOf("other.ltp"), BytesOf("new")), EFileError);
    EXPECT_TRUE(!isRoot || seteuid(0) == 0);
    std::filesystem::permissions(folder, perms::owner_all);
    EXPECT_EQ(ReadWholeFile(name), BytesOf("new"));
    EXPECT_EQ(std::filesystem::status(name).permissions(), static_cast<perms>(0666));
}
#endif

TEST_F(ReplaceFileTest, WhatCannotBeWrittenIsNamedInTheError) {
    std::vector<std::pair<std::string, std::string>> cases = {
        {"", "no name. Choose one"},
        {NameOf("."), "is a folder. Choose another name"},
        {NameOf("missing/plot.ltp"), "folder does not exist. Choose another one"},
        {NameOf(std::string(256, 'n').c_str()), "too long. Choose a shorter one"}};
    if (std::filesystem::exists("/dev/full")) cases.emplace_back("/dev/full", "may be full. Free some space");
    for (const auto& [name, advice] : cases) {
        const auto text = ThrownText<EFileError>([&, &to = name] { ReplaceFile(to, BytesOf("content")); });
        EXPECT_TRUE(text.starts_with("Can not save to file " + name + ": ")) << text;
        EXPECT_NE(text.find(advice), std::string::npos) << text;
    }
    for (const auto& [name, advice] : {std::pair("missing", "no such file. Check"), {".", "Choose a file"}}) {
        const auto text = ThrownText<EFileError>([&, from = name] { ReadWholeFile(NameOf(from)); });
        EXPECT_TRUE(text.starts_with("Can not open file " + NameOf(name) + ": ")) << text;
        EXPECT_NE(text.find(advice), std::string::npos) << text;
    }
}

TEST_F(ReplaceFileTest, TheFileKeepsItsPermissions) {
    using std::filesystem::perms;
    const std::string name = NameOf("private.ltp");
    ReplaceFile(name, BytesOf("old"));
    for (const perms wanted :
         {perms::owner_read | perms::owner_write, perms::owner_all | perms::group_read}) {
        std::filesystem::permissions(name, wanted);
        const perms before = std::filesystem::status(name).permissions(); // as the system has it
        ReplaceFile(name, BytesOf("new"));
        EXPECT_EQ(std::filesystem::status(name).permissions(), before);
    }
}

} // namespace
} // namespace lumoplot
