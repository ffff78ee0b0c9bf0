#include "host/editor_library.h"

#include "support/errors.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace lumoplot {
namespace {

constexpr int kLongestName = 255;
constexpr int kLastPage = -1;
constexpr int kSourcePage = 1;

const QString kLibraryName = QStringLiteral("xydataeditor");

/// Where the library lies: beside the program (Windows), in the lib folder of a build or an installation, or
/// wherever the system's loader looks.
QStringList Candidates() {
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QStringLiteral(LUMOPLOT_LIBRARY_FOLDER);
    return {program.filePath(kLibraryName), program.filePath(QStringLiteral("../lib/") + kLibraryName),
            program.filePath(QStringLiteral("../") + installed + QLatin1Char('/') + kLibraryName),
            kLibraryName};
}

bool Fits(const QString& name) {
    const std::string utf8 = name.toStdString();
    return FromShortString(ToShortString(utf8, kLongestName)) == utf8;
}

} // namespace

TEditorLibrary::~TEditorLibrary() {
    if (m_deleteEditor) m_deleteEditor();
}

void TEditorLibrary::Load() {
    if (m_editData) return;
    QString reason;
    for (const QString& candidate : Candidates()) {
        m_library.setFileName(candidate);
        if (m_library.load()) break;
        reason = m_library.errorString();
    }
    if (!m_library.isLoaded()) throw EFileError("The data editor can not be loaded: " + reason.toStdString());
    const auto editData = reinterpret_cast<TEditData>(m_library.resolve("editxyData"));
    const auto deleteEditor = reinterpret_cast<TDeleteEditor>(m_library.resolve("deleteDataEditor"));
    if (!editData || !deleteEditor)
        throw EFileError("The library " + m_library.fileName().toStdString() + " is not the data editor");
    m_editData = editData;
    m_deleteEditor = deleteEditor;
}

bool TEditorLibrary::EditGraph(TxyGraph& graph, QString& templateName, const QString& sourceFile) {
    Load();
    if (!Fits(sourceFile))
        throw EFileError("The name of the file " + sourceFile.toStdString() +
                         " is too long for the data editor");
    // A cut name would make "Set as Default" write another file; without a name the editor offers none.
    TShortString name = Fits(templateName) ? ToShortString(templateName.toStdString()) : TShortString();
    const bool withSource = !sourceFile.isEmpty();
    const int startPage = std::exchange(m_startPage, kLastPage);
    const bool accepted = m_editData(graph, name, kLongestName, ToShortString(sourceFile.toStdString()),
                                     withSource, withSource ? kSourcePage : startPage);
    if (accepted && name.Length > 0) templateName = QString::fromStdString(FromShortString(name));
    return accepted;
}

} // namespace lumoplot
