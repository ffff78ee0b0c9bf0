// The data editor as a host uses it: a shared library that is loaded when it is first needed, reached through
// its two C names.
#pragma once

#include "editor/editxydata.h"

#include <QLibrary>
#include <QString>

namespace lumoplot {

class TEditorLibrary {
public:
    TEditorLibrary() = default;
    /// Destroys the editor's dialog; the application object must still live.
    ~TEditorLibrary();
    TEditorLibrary(const TEditorLibrary&) = delete;
    TEditorLibrary& operator=(const TEditorLibrary&) = delete;

    /// Runs the modal editor on the graph; false when the user cancelled and the graph is as before. With a
    /// source file the editor starts with a new data set that is fed from it. `templateName` is the file
    /// that "Set as Default" writes, empty for none; the editor may change it.
    /// Throws EFileError when the library cannot be loaded and what the editor throws.
    bool EditGraph(TxyGraph& graph, QString& templateName, const QString& sourceFile = {});

    /// The next EditGraph without a source file shows that page first; else the one shown last.
    void StartOnce(int page) { m_startPage = page; }

private:
    using TEditData = decltype(&editxyData);
    using TDeleteEditor = decltype(&deleteDataEditor);

    void Load();

    QLibrary m_library;
    TEditData m_editData = nullptr;
    TDeleteEditor m_deleteEditor = nullptr;
    int m_startPage = -1;
};

} // namespace lumoplot
