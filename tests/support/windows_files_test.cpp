// What is Windows' own about names and open files.
#if defined(_WIN32)
#include "common/thrown_text.h"
#include "support/errors.h"
#include "support/replace_file.h"
#include "support/system_path.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <windows.h>
#undef ReplaceFile // it is ours

namespace lumoplot {
namespace {

std::vector<std::uint8_t> BytesOfText(const std::string& text) {
    return {text.begin(), text.end()};
}

class WindowsFilesTest : public testing::Test {
protected:
    QString NameOf(const QString& file) const { return m_folder.filePath(file); }
    void ExpectReplaced(const QString& name) const {
        ReplaceFile(name.toStdString(), BytesOfText("first"));
        ReplaceFile(name.toStdString(), BytesOfText("second"));
        EXPECT_EQ(ReadWholeFile(name.toStdString()), BytesOfText("second")) << name.toStdString();
    }
    int Files() const { return static_cast<int>(QDir(m_folder.path()).entryList(QDir::Files).size()); }
    QTemporaryDir m_folder;
};

TEST_F(WindowsFilesTest, NamesOfDevicesAndStreamsAreNoFiles) {
    for (const char* name :
         {"NUL", "nul.ltp", "con", "Com1.ltp", "LPT9", "aux .txt", "a:b", "CONOUT$", "what?"})
        for (const bool isFullName : {false, true}) {
            const QString file = QString::fromLatin1(name);
            const std::string tried = (isFullName ? NameOf(file) : file).toStdString();
            EXPECT_THROW(ReplaceFile(tried, BytesOfText("lost")), EFileError) << tried;
            EXPECT_THROW(ReadWholeFile(tried), EFileError) << tried;
        }
    for (const char* name : {"null.ltp", "com.ltp", "COM0", "lpt10", "console"})
        ExpectReplaced(NameOf(QString::fromLatin1(name)));
}

TEST_F(WindowsFilesTest, NamesAreTakenInAllTheirForms) {
    const QString native = QDir::toNativeSeparators(NameOf(QStringLiteral("plot.ltp")));
    ExpectReplaced(native);
    ExpectReplaced(native.toUpper());
    ExpectReplaced(QStringLiteral(R"(\\?\)") + native);
    EXPECT_EQ(Files(), 1);
    ExpectReplaced(NameOf(QString::fromUtf8("Gr\u00F6\u00DFe \u03B1 \u20AC.ltp")));
}

TEST_F(WindowsFilesTest, NamesMayBeLongerThan260Characters) {
    QString folder = m_folder.path();
    while (folder.size() < 400) folder += QLatin1Char('/') + QString(60, QLatin1Char('d'));
    ASSERT_TRUE(QDir().mkpath(folder));
    ExpectReplaced(folder + QStringLiteral("/plot.ltp"));
    ExpectReplaced(QDir::toNativeSeparators(folder) + QStringLiteral("\\PLOT.ltp"));
}

TEST_F(WindowsFilesTest, NamesOnSharesAreTakenToo) {
    const std::string folder(250, 'd');
    const std::wstring longName = LR"(\\?\UNC\server\share\)" + std::wstring(250, L'd') + LR"(\plot.ltp)";
    EXPECT_EQ(SystemPath(R"(\\server\share\)" + folder + R"(\plot.ltp)").wstring(), longName);
    EXPECT_EQ(SystemPath("//server/share/" + folder + "/x/../plot.ltp").wstring(), longName);
    EXPECT_EQ(SystemPath(R"(\\server\share\plot.ltp)").wstring(), LR"(\\server\share\plot.ltp)");
    EXPECT_TRUE(SystemPath(R"(\\server\share\nul.ltp)").empty());
    EXPECT_THROW(ReadWholeFile(R"(\\no-such-server\share\plot.ltp)"), EFileError);
}

TEST_F(WindowsFilesTest, AFileThatAnotherProgramHoldsOpenStays) {
    const QString name = NameOf(QStringLiteral("plot.ltp"));
    ReplaceFile(name.toStdString(), BytesOfText("old"));
    const std::wstring wide = QDir::toNativeSeparators(name).toStdWString();
    const HANDLE held =
        CreateFileW(wide.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_NE(ThrownText<EFileError>([&] {
                  ReplaceFile(name.toStdString(), BytesOfText("new"));
              }).find("another program has it open"),
              std::string::npos);
    CloseHandle(held);
    EXPECT_EQ(ReadWholeFile(name.toStdString()), BytesOfText("old"));
    EXPECT_EQ(Files(), 1);
    ExpectReplaced(name);
}

TEST_F(WindowsFilesTest, AFileMayHaveTwoNames) {
    const QString name = NameOf(QStringLiteral("plot.ltp")), second = NameOf(QStringLiteral("second.ltp"));
    ReplaceFile(name.toStdString(), BytesOfText("old"));
    ASSERT_TRUE(CreateHardLinkW(second.toStdWString().c_str(), name.toStdWString().c_str(), nullptr));
    ReplaceFile(name.toStdString(), BytesOfText("new"));
    EXPECT_EQ(ReadWholeFile(second.toStdString()), BytesOfText("new"));
}

TEST_F(WindowsFilesTest, AReadOnlyFileStays) {
    const QString name = NameOf(QStringLiteral("plot.ltp"));
    ReplaceFile(name.toStdString(), BytesOfText("old"));
    const std::wstring wide = name.toStdWString();
    ASSERT_TRUE(SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_THROW(ReplaceFile(name.toStdString(), BytesOfText("new")), EFileError);
    EXPECT_EQ(ReadWholeFile(name.toStdString()), BytesOfText("old"));
    SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_NORMAL);
}

} // namespace
} // namespace lumoplot
#endif
