#include "host/sheet/sheet_book.h"

#include "data/series/ds_info.h"
#include "graph/loading/source_loading.h"
#include "graph/model/graph.h"
#include "graph/model/holder.h"
#include "host/sheet/sheet_text.h"
#include "session/graph_session.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace lumoplot {
namespace {

const QString kSuffix = QStringLiteral(".sheet.csv");

// A name that any file system takes.
QString FileNameOf(const std::string& sheet) {
    static const QRegularExpression forbidden(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]+"));
    return QString::fromStdString(sheet).replace(forbidden, QStringLiteral("_"));
}

QString StemOf(const QString& graphFile) {
    return QFileInfo(graphFile).completeBaseName() + QLatin1Char('.');
}

} // namespace

class TSheetBook::TState final : public TSideState {
public:
    explicit TState(std::vector<TSheet> sheets) : m_sheets(std::move(sheets)) {}

    const std::vector<TSheet>& Sheets() const { return m_sheets; }

    std::size_t BytesBeside(const TSideState* earlier) const override {
        const auto* before = dynamic_cast<const TState*>(earlier);
        std::size_t bytes = sizeof(*this);
        for (std::size_t i = 0; i < m_sheets.size(); ++i) {
            const bool hasBefore = before && i < before->m_sheets.size();
            bytes += m_sheets[i].BytesBeside(hasBefore ? &before->m_sheets[i] : nullptr);
        }
        return bytes;
    }
    TBytes ToBytes(const TGraphSnapshot&) const override { return BytesOf(m_sheets); }

private:
    std::vector<TSheet> m_sheets;
};

TSheetBook::TSheetBook(TGraphSession& session, QObject* parent) : QObject(parent), m_session(session) {
    m_session.SetSide({[this]() -> TSideStatePtr { return m_state; },
                       [this](const TSideStatePtr& state) {
                           m_state = std::dynamic_pointer_cast<const TState>(state);
                           Q_EMIT Changed();
                       }});
    m_session.Graph().Holder()->OfferSheets({[this] {
                                                 std::vector<std::string> names;
                                                 for (const TSheet& sheet : Sheets())
                                                     names.push_back(sheet.Name());
                                                 return names;
                                             },
                                             [this](const std::string& name) { return TextOfSheet(name); }});
}

TSheetBook::~TSheetBook() {
    m_session.Graph().Holder()->OfferSheets({});
}

const std::vector<TSheet>& TSheetBook::Sheets() const {
    static const std::vector<TSheet> none;
    return m_state ? m_state->Sheets() : none;
}

std::string TSheetBook::TextOfSheet(const std::string& name) const {
    const auto sheet = std::ranges::find(Sheets(), name, &TSheet::Name);
    if (sheet == Sheets().end()) throw EFileError("There is no sheet " + name);
    return TextOf(CellsOf(*sheet, TSheetTitles::NamesOnly));
}

std::string TSheetBook::FreeName() const {
    for (std::size_t number = 1;; ++number) {
        const std::string name = "Sheet " + std::to_string(number);
        if (std::ranges::find(Sheets(), name, &TSheet::Name) == Sheets().end()) return name;
    }
}

void TSheetBook::Become(std::vector<TSheet> sheets) {
    m_state = sheets.empty() ? nullptr : std::make_shared<const TState>(std::move(sheets));
}

int TSheetBook::Add(const TSheet* content) {
    std::vector<TSheet> sheets = Sheets();
    sheets.push_back(content ? content->Named(FreeName()) : TSheet(FreeName()));
    m_session.Change("new sheet", [&] { Become(sheets); });
    Q_EMIT Changed();
    return static_cast<int>(Sheets().size()) - 1;
}

void TSheetBook::Change(int sheet, const QString& step, const std::function<void(TSheet&)>& action) {
    std::vector<TSheet> sheets = Sheets();
    TSheet& changed = sheets.at(static_cast<std::size_t>(sheet));
    action(changed);
    if (changed == Sheets()[static_cast<std::size_t>(sheet)]) return;
    const std::string name = changed.Name();
    m_session.Change(step.toStdString(), [&] {
        Become(std::move(sheets));
        Follow(name);
    });
    Q_EMIT Changed();
}

void TSheetBook::Follow(const std::string& name) {
    m_problem.clear();
    for (TSeries* series : m_session.Graph().Series()) {
        const TDSInfo& source = series->DataSourceInfo();
        if (source.Kind() != TSourceKind::LumoSheet || source.SourceName() != name) continue;
        try {
            TSilentProgress progress;
            LoadFromSource(*series, progress, {.Name = TLoadedName::Kept});
        } catch (const ELumoError& error) {
            m_problem = QString::fromUtf8(error.what());
        }
    }
}

void TSheetBook::LoadBeside(const QString& graphFile) {
    std::vector<TSheet> sheets;
    const QDir folder = QFileInfo(graphFile).absoluteDir();
    const QString stem = StemOf(graphFile);
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        if (!name.startsWith(stem) || !name.endsWith(kSuffix)) continue;
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QByteArray text = file.readAll();
        const QString sheet = name.mid(stem.size(), name.size() - stem.size() - kSuffix.size());
        sheets.push_back(SheetOf(sheet.toStdString(), CellsOf(text.toStdString(), ','), TSheetTop::Titles));
    }
    Become(std::move(sheets));
    Q_EMIT Changed();
}

void TSheetBook::Restore(std::span<const std::uint8_t> bytes) {
    Become(SheetsOf(bytes));
    Q_EMIT Changed();
}

void TSheetBook::Clear() {
    Become({});
    Q_EMIT Changed();
}

/// Files of sheets that are no more are left: nothing of a person's is removed without being asked for.
void TSheetBook::SaveBeside(const QString& graphFile) const {
    for (const TSheet& sheet : Sheets()) {
        const QString name = StemOf(graphFile) + FileNameOf(sheet.Name()) + kSuffix;
        const std::string text = TextOf(CellsOf(sheet, TSheetTitles::AsTyped), ',');
        ReplaceFile(QFileInfo(graphFile).absoluteDir().filePath(name).toStdString(),
                    std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    }
}

} // namespace lumoplot
