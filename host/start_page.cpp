#include "host/start_page.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumoplot {

TStartPage::TStartPage(QWidget& graph, QAction& openData, QAction& openGraph) : QWidget(&graph) {
    setObjectName(QStringLiteral("startPage"));
    setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(tr("How do you want to begin?"), this);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    title->setFont(font);
    layout->addWidget(title);
    const auto add = [&](const char* name, const QString& caption, const QString& hint) {
        auto* way = new QPushButton(caption, this);
        way->setObjectName(QLatin1String(name));
        auto* text = new QLabel(hint, this);
        text->setWordWrap(true);
        text->setBuddy(way);
        layout->addWidget(way);
        layout->addWidget(text);
        return way;
    };
    connect(add("btnOpenData", tr("O&pen Data…"), tr("Text files with columns; or drop them here.")),
            &QPushButton::clicked, &openData, &QAction::trigger);
    connect(add("btnOpenGraph", tr("Open &Graph…"), tr("A graph that was saved before.")),
            &QPushButton::clicked, &openGraph, &QAction::trigger);
    connect(add("btnExample", tr("Try the E&xample"), tr("A graph to play with.")), &QPushButton::clicked,
            this, &TStartPage::ExampleWanted);
    graph.installEventFilter(this);
    MoveToMiddle();
}

bool TStartPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) MoveToMiddle();
    return QWidget::eventFilter(watched, event);
}

void TStartPage::MoveToMiddle() {
    const QSize room = parentWidget()->size();
    resize(sizeHint().boundedTo(room));
    move((room.width() - width()) / 2, (room.height() - height()) / 2);
}

} // namespace lumoplot
