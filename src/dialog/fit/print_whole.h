// Prints a page of text whose tables may be wider than the paper.
#pragma once

#include <QSizeF>

class QPrinter;
class QTextDocument;

namespace lumoplot {

/// The paper, in pixels, or a larger page of its shape that holds the widest table of the document.
QSizeF PageThatHolds(QTextDocument& document, QSizeF paper);

/// As QTextDocument::print, but made smaller where it is too wide for the paper, so that nothing is cut off.
void PrintWhole(QTextDocument& document, QPrinter& printer);

} // namespace lumoplot
