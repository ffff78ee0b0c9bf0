#include "dialogs/editing/series_list.h"

#include "controls/texts.h"
#include "graph/drawing/lines/canvas.h"
#include "graph/model/series.h"

#include <QComboBox>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPointer>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr QSize kPicture(28, 14);
constexpr int kPointSide = 7;
constexpr int kMostRowsShown = 14;

/// The entries of a box with an edit above them.
class TFilterPopup : public QFrame {
public:
    explicit TFilterPopup(QComboBox& box) : QFrame(&box, Qt::Popup), m_box(box) {
        setObjectName(QStringLiteral("filterPopup"));
        setFrameShape(QFrame::StyledPanel);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(2, 2, 2, 2);
        layout->setSpacing(2);
        m_edit->setObjectName(QStringLiteral("e_Filter"));
        m_edit->setPlaceholderText(TTexts::tr("Type a part of the name"));
        m_edit->setAccessibleName(TTexts::tr("Part of the name"));
        m_edit->setClearButtonEnabled(true);
        m_edit->installEventFilter(this);
        layout->addWidget(m_edit);
        m_shown.setSourceModel(box.model());
        m_shown.setFilterCaseSensitivity(Qt::CaseInsensitive);
        m_list->setModel(&m_shown);
        m_list->setUniformItemSizes(true);
        m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
        m_list->setFocusProxy(m_edit);
        m_list->setIconSize(kPicture);
        layout->addWidget(m_list);
        connect(m_edit, &QLineEdit::textChanged, this, [this](const QString& text) { Filter(text); });
        connect(m_list, &QListView::clicked, this, [this](const QModelIndex& index) { Choose(index); });
    }

    void Open() {
        m_edit->clear();
        SelectRow(m_shown.mapFromSource(m_box.model()->index(m_box.currentIndex(), 0)).row());
        const int rows = std::clamp(m_box.count(), 1, kMostRowsShown);
        const int rowHeight = std::max(m_list->sizeHintForRow(0), fontMetrics().height());
        m_list->setMinimumHeight(rows * rowHeight + 2 * m_list->frameWidth());
        resize(std::max(m_box.width(), 220), sizeHint().height());
        move(m_box.mapToGlobal(QPoint(0, m_box.height())));
        show();
        m_edit->setFocus();
    }

protected:
    // The keys walk the list while the edit has the focus.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
        const int row = m_list->currentIndex().row();
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Down: SelectRow(row + 1); return true;
        case Qt::Key_Up: SelectRow(row - 1); return true;
        case Qt::Key_PageDown: SelectRow(row + kMostRowsShown); return true;
        case Qt::Key_PageUp: SelectRow(row - kMostRowsShown); return true;
        case Qt::Key_Return:
        case Qt::Key_Enter: Choose(m_list->currentIndex()); return true;
        default: return QFrame::eventFilter(watched, event);
        }
    }

private:
    void Filter(const QString& text) {
        m_shown.setFilterFixedString(text);
        SelectRow(std::max(0, m_list->currentIndex().row()));
    }
    void SelectRow(int row) {
        if (m_shown.rowCount() == 0) return;
        m_list->setCurrentIndex(m_shown.index(std::clamp(row, 0, m_shown.rowCount() - 1), 0));
    }
    void Choose(const QModelIndex& index) {
        if (!index.isValid()) return;
        const int row = m_shown.mapToSource(index).row();
        close();
        m_box.setFocus();
        m_box.setCurrentIndex(row);
        Q_EMIT m_box.activated(row);
    }

    QComboBox& m_box;
    QLineEdit* m_edit = new QLineEdit(this);
    QListView* m_list = new QListView(this);
    QSortFilterProxyModel m_shown;
};

bool IsOpening(const QEvent& event) {
    if (event.type() == QEvent::MouseButtonPress)
        return static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton;
    if (event.type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    const bool isAltDown = key.key() == Qt::Key_Down && key.modifiers().testFlag(Qt::AltModifier);
    return key.key() == Qt::Key_F4 || key.key() == Qt::Key_Space || isAltDown;
}

class TFilterOffer : public QObject {
public:
    explicit TFilterOffer(QComboBox& box) : QObject(&box), m_box(box) { box.installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (!IsOpening(*event) || !m_box.isEnabled() || m_box.count() == 0) return false;
        if (!m_popup) m_popup = new TFilterPopup(m_box);
        m_popup->Open();
        return true;
    }

private:
    QComboBox& m_box;
    QPointer<TFilterPopup> m_popup;
};

} // namespace

QIcon SeriesIcon(const TSeries& series) {
    QPixmap picture(kPicture * 2);
    picture.setDevicePixelRatio(2);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const int middle = kPicture.height() / 2;
    if (series.LinesShown()) {
        painter.setPen(QPen(ToQColor(series.LineColor()), 2));
        painter.drawLine(1, middle, kPicture.width() - 2, middle);
    }
    if (series.PointsShown())
        painter.fillRect(QRect((kPicture.width() - kPointSide) / 2, (kPicture.height() - kPointSide) / 2,
                               kPointSide, kPointSide),
                         ToQColor(series.PointColor()));
    painter.end();
    return picture;
}

void OfferFilter(QComboBox& box) {
    box.setIconSize(kPicture);
    new TFilterOffer(box);
}

} // namespace lumoplot
