#include "host/sheet/sheet_book.h"

#include "data/series/ds_info.h"
#include "graph/loading/source_loading.h"
#include "graph/model/child_graph.h"
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
constexpr int kMaxName = 60;
#ifdef Q_OS_WIN
constexpr Qt::CaseSensitivity kFileCase = Qt::CaseInsensitive;
#else
constexpr Qt::CaseSensitivity kFileCase = Qt::CaseSensitive;
#endif

// A name that any file system takes.
QString FileNameOf(const std::string& sheet) {
    static const QRegularExpression forbidden(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]+"));
    return QString::fromStdString(sheet).replace(forbidden, QStringLiteral("_"));
}

QString StemOf(const QString& graphFile) {
    return QFileInfo(graphFile).completeBaseName() + QLatin1Char('.');
}

QString FileBeside(const QString& graphFile, const std::string& sheet) {
    return QFileInfo(graphFile).absoluteDir().filePath(StemOf(graphFile) + FileNameOf(sheet) + kSuffix);
}

// With those of its panels.
void AddSeriesOf(TxyGraph& graph, const std::string& sheet, std::vector<TSeries*>& found) {
    for (TSeries* series : graph.Series()) {
        const TDSInfo& source = series->DataSourceInfo();
        if (source.Kind() == TSourceKind::LumoSheet && source.SourceName() == sheet) found.push_back(series);
    }
    for (TxyChildGr* child : graph.ChildGraphs()) AddSeriesOf(*child, sheet, found);
}

std::vector<TSeries*> SeriesOf(TxyGraph& graph, const std::string& sheet) {
    std::vector<TSeries*> found;
    AddSeriesOf(graph, sheet, found);
    return found;
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

void TSheetBook::CheckName(int sheet, const QString& name) const {
    if (name.isEmpty()) throw EFileError("A sheet needs a name");
    if (name.size() > kMaxName)
        throw EFileError("The name of a sheet has at most " + std::to_string(kMaxName) + " characters");
    if (FileNameOf(name.toStdString()) != name)
        throw EFileError(
            "The name of a sheet is a part of its file's: it can not have any of \\ / : * ? \" < > |");
    for (std::size_t i = 0; i < Sheets().size(); ++i)
        if (static_cast<int>(i) != sheet &&
            name.compare(QString::fromStdString(Sheets()[i].Name()), Qt::CaseInsensitive) == 0)
            throw EFileError("There is a sheet " + Sheets()[i].Name() + " already");
}

void TSheetBook::Rename(int sheet, const QString& wanted) {
    const QString name = wanted.trimmed();
    CheckName(sheet, name);
    std::vector<TSheet> sheets = Sheets();
    TSheet& renamed = sheets.at(static_cast<std::size_t>(sheet));
    const std::string before = renamed.Name();
    if (name.toStdString() == before) return;
    renamed = renamed.Named(name.toStdString());
    m_session.Change("rename sheet " + before, [&] {
        Become(std::move(sheets));
        for (TSeries* series : SeriesOf(m_session.Graph(), before))
            series->DataSourceInfo().SetSourceName(name.toStdString());
    });
    Q_EMIT Changed();
}

void TSheetBook::Delete(int sheet) {
    std::vector<TSheet> sheets = Sheets();
    const std::string name = sheets.at(static_cast<std::size_t>(sheet)).Name();
    sheets.erase(sheets.begin() + sheet);
    m_session.Change("delete sheet " + name, [&] { Become(std::move(sheets)); });
    Q_EMIT Changed();
}

void TSheetBook::Follow(const std::string& name) {
    m_problem.clear();
    for (TSeries* series : SeriesOf(m_session.Graph(), name)) {
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
    m_filed.clear();
    const QDir folder = QFileInfo(graphFile).absoluteDir();
    const QString stem = StemOf(graphFile);
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        if (!name.startsWith(stem) || !name.endsWith(kSuffix)) continue;
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) continue;
        m_filed += QFileInfo(file).absoluteFilePath();
        const QByteArray text = file.readAll();
        const QString sheet = name.mid(stem.size(), name.size() - stem.size() - kSuffix.size());
        sheets.push_back(SheetOf(sheet.toStdString(), CellsOf(text.toStdString(), ','), TSheetTop::Titles));
    }
    Become(std::move(sheets));
    Q_EMIT Changed();
}

void TSheetBook::Restore(std::span<const std::uint8_t> bytes) {
    m_filed.clear();
    Become(SheetsOf(bytes));
    Q_EMIT Changed();
}

void TSheetBook::Clear() {
    m_filed.clear();
    Become({});
    Q_EMIT Changed();
}

void TSheetBook::SaveBeside(const QString& graphFile) const {
    for (const TSheet& sheet : Sheets()) {
        const std::string text = TextOf(CellsOf(sheet, TSheetTitles::AsTyped), ',');
        ReplaceFile(FileBeside(graphFile, sheet.Name()).toStdString(),
                    std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
    }
}

/// Another file of that kind may be a person's own: it stays.
void TSheetBook::RemoveOthersBeside(const QString& graphFile) {
    QStringList written;
    for (const TSheet& sheet : Sheets()) written += FileBeside(graphFile, sheet.Name());
    const QString beside = FileBeside(graphFile, {}).chopped(kSuffix.size());
    for (const QString& name : std::as_const(m_filed))
        if (name.startsWith(beside) && !written.contains(name, kFileCase)) QFile::remove(name);
    m_filed = written;
}

} // namespace lumoplot
