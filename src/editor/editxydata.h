// The two functions that a host calls, exported by their C names. They run on the host's user-interface
// thread.
#pragma once

#include "graph/model/graph.h"
#include "support/short_string.h"

#if defined(_WIN32)
#if defined(XYDATAEDITOR_BUILDING)
#define XYDATAEDITOR_EXPORT __declspec(dllexport)
#else
#define XYDATAEDITOR_EXPORT __declspec(dllimport)
#endif
#else
#define XYDATAEDITOR_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

/// Runs the modal data editor on a copy of `Graph` and writes it back unless the user cancels.
///
/// - Graph: the host's graph; untouched on Cancel and when an exception passes before the dialog has closed.
/// - TemplateName: shown in the caption and used by "Set as Default"; written back with the graph, cut to
///   TemplateNameMax characters. A Graph with a windowTitle() is named by that in the caption.
/// - SourceFile: a data file that a new data set is fed from; read only when OpenWithSource is true.
/// - StartPage: the page shown first (General 0, Data Source 1, …); negative keeps the last page.
///
/// While the dialog is shown, its steps are kept in the user's folder for state. When a crash or a kill ended
/// a call, the next one for the same graph offers them before the dialog is shown; a graph is the same by
/// TemplateName, its title and the names and sources of its data sets.
///
/// True when the graph was written back. False, and nothing done, while another call has not returned yet: an
/// exception would end that one. Throws lumoplot::ELumoError when there is no application object or the
/// template cannot be saved (the graph has been written back by then).
XYDATAEDITOR_EXPORT bool editxyData(lumoplot::TxyGraph& Graph, lumoplot::TShortString& TemplateName,
                                    int TemplateNameMax, lumoplot::TShortString SourceFile,
                                    bool OpenWithSource, int StartPage);

/// Destroys the dialog that the library keeps between calls; does nothing when there is none. While the
/// dialog is shown this cancels it, and it goes when the call that shows it returns.
XYDATAEDITOR_EXPORT void deleteDataEditor();
}
