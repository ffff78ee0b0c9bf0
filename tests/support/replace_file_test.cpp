#include "support/replace_file.h"

#include "support/errors.h"

#include <QTemporaryDir>
#include <filesystem>
#include <gtest/gtest.h>

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

TEST_F(ReplaceFileTest, WhatCannotBeWrittenIsNamedInTheError) {
    std::vector<std::string> names = {"", NameOf("."), NameOf("missing/plot.ltp")};
    if (std::filesystem::exists("/dev/full")) names.push_back("/dev/full");
    for (const auto& name : names) {
        try {
            ReplaceFile(name, BytesOf("content"));
            ADD_FAILURE() << name;
        } catch (const EFileError& error) {
            EXPECT_EQ(error.what(), "Can not save to file " + name);
        }
    }
    EXPECT_THROW(ReadWholeFile(NameOf("missing")), EFileError);
    EXPECT_THROW(ReadWholeFile(NameOf(".")), EFileError);
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
