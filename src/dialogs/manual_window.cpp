#include "dialogs/manual_window.h"
#include "controls/texts.h"

#include <QDialog>
#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace lumoplot {
namespace {

const QString kFolder = QStringLiteral(":/lumoplot/manual/");
const QString kFirstPage = QStringLiteral("start.md");
const QString kWindowName = QStringLiteral("manualWindow");
constexpr QSize kManualSize(720, 520);

/// Pictures that are wider than the window shrink to it.
class TManualText : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override {
        if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
        QImage picture(QLatin1Char(':') + source().resolved(name).path());
        const int room =
            static_cast<int>((viewport()->width() - 4 * document()->documentMargin()) * devicePixelRatioF());
        if (picture.width() > room && room > 0) {
            picture = picture.scaledToWidth(room, Qt::SmoothTransformation);
            picture.setDevicePixelRatio(devicePixelRatioF());
        }
        return picture;
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QTextBrowser::resizeEvent(event);
        if (event->size().width() == event->oldSize().width()) return;
        const int place = verticalScrollBar()->value();
        reload();
        verticalScrollBar()->setValue(place);
    }
};

class TManualWindow : public QDialog {
public:
    explicit TManualWindow(QWidget* parent) : QDialog(parent, Qt::Window) {
        setObjectName(kWindowName);
        setWindowTitle(TTexts::tr("Lumoplot Manual"));
        setAttribute(Qt::WA_DeleteOnClose);
        resize(kManualSize);
        auto* layout = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        AddButton(*bar, TTexts::tr("Con&tents"), [this] { ShowPage(kFirstPage); });
        AddButton(*bar, TTexts::tr("&Back"), [this] { m_text->backward(); });
        bar->addStretch();
        m_find->setObjectName(QStringLiteral("e_Find"));
        m_find->setPlaceholderText(TTexts::tr("Find in this page"));
        m_find->setAccessibleName(TTexts::tr("Find in this page"));
        m_find->setClearButtonEnabled(true);
        bar->addWidget(m_find);
        layout->addLayout(bar);
        m_text->setObjectName(QStringLiteral("m_Manual"));
        m_text->setAccessibleName(TTexts::tr("Manual"));
        m_text->setOpenExternalLinks(true);
        layout->addWidget(m_text, 1);
        connect(m_find, &QLineEdit::returnPressed, this, [this] { Find(); });
    }

    void ShowPage(const QString& page) {
        const bool isThere = QFile::exists(kFolder + page);
        m_text->setSource(QUrl(QStringLiteral("qrc") + kFolder + (isThere ? page : kFirstPage)));
        m_text->setFocus();
    }

private:
    template <class TAction>
    void AddButton(QHBoxLayout& bar, const QString& caption, TAction action) {
        auto* button = new QPushButton(caption, this);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, action);
        bar.addWidget(button);
    }
    /// From the place found last, and from the top again behind the last one.
    void Find() {
        if (m_text->find(m_find->text())) return;
        m_text->moveCursor(QTextCursor::Start);
        m_text->find(m_find->text());
    }

    QLineEdit* m_find = new QLineEdit(this);
    TManualText* m_text = new TManualText(this);
};

} // namespace

void ShowManual(const QString& page, QWidget* parent) {
    QWidget* window = parent ? parent->window() : nullptr;
    auto* shown = window ? window->findChild<QDialog*>(kWindowName, Qt::FindDirectChildrenOnly) : nullptr;
    auto* manual = shown ? static_cast<TManualWindow*>(shown) : new TManualWindow(window);
    manual->ShowPage(page);
    manual->show();
    manual->raise();
    manual->activateWindow();
}

void OfferManual(QWidget& window, std::function<QString()> page) {
    auto* key = new QShortcut(QKeySequence::HelpContents, &window);
    QObject::connect(key, &QShortcut::activated, &window,
                     [&window, page = std::move(page)] { ShowManual(page(), &window); });
}

} // namespace lumoplot
