#include "dialog/fit/print_whole.h"

#include <QPrinter>
#include <QTextDocument>
#include <algorithm>
#include <memory>

namespace lumoplot {
namespace {

constexpr int kPaperDpi = 96;
constexpr double kPaperMargin = 2 / 2.54 * kPaperDpi;

std::unique_ptr<QTextDocument> WithMargin(QTextDocument& document) {
    std::unique_ptr<QTextDocument> copy(document.clone(&document));
    copy->setDocumentMargin(kPaperMargin);
    return copy;
}

} // namespace

QSizeF PageThatHolds(QTextDocument& document, QSizeF paper) {
    const std::unique_ptr<QTextDocument> copy = WithMargin(document);
    copy->setTextWidth(paper.width());
    return paper * std::max(1.0, copy->size().width() / paper.width());
}

void PrintWhole(QTextDocument& document, QPrinter& printer) {
    const QSizeF paper = printer.pageLayout().paintRectPixels(kPaperDpi).size();
    const QSizeF page = PageThatHolds(document, paper);
    if (page == paper) return document.print(&printer);
    const std::unique_ptr<QTextDocument> copy = WithMargin(document);
    copy->setPageSize(page);
    copy->print(&printer);
}

} // namespace lumoplot
