// The data holder of a graph: the identifier under which hosts exchange its data, and how data are split when
// they are exchanged as text.
#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace lumoplot {

/// The sheets of cells that a host lets data sets be read from. Both functions are called whenever they are
/// needed.
struct TSheetOffer {
    /// The names of the sheets, as a user knows them.
    std::function<std::vector<std::string>()> Names;
    /// The cells of a sheet as a spreadsheet copies them: rows of cells between tabs, in UTF-8. May throw an
    /// ELumoError.
    std::function<std::string(const std::string& name)> Text;

    explicit operator bool() const { return Names && Text; }
};

class TxyHolder : public QObject {
    Q_OBJECT

public:
    explicit TxyHolder(QObject* owner = nullptr) : QObject(owner) {}

    const std::string& ID() const { return m_id; }
    const std::string& TextSeparators() const { return m_textSeparators; }
    const std::string& TextMarkers() const { return m_textMarkers; }
    /// False while the host offers no sheets. Neither filed nor copied with the graph.
    const TSheetOffer& Sheets() const { return m_sheets; }

    // Each stores a changed value and emits OnChange.
    void SetID(const std::string& value) { Store(m_id, value); }
    void SetTextSeparators(const std::string& value) { Store(m_textSeparators, value); }
    void SetTextMarkers(const std::string& value) { Store(m_textMarkers, value); }
    /// Offers sheets as sources of data sets; an empty offer takes them back.
    void OfferSheets(TSheetOffer sheets) { m_sheets = std::move(sheets); }

Q_SIGNALS:
    void OnChange();

private:
    void Store(std::string& field, const std::string& value) {
        if (field == value) return;
        field = value;
        Q_EMIT OnChange();
    }

    std::string m_id;
    TSheetOffer m_sheets;
    std::string m_textSeparators = "\t,";
    std::string m_textMarkers = "'\"";
};

} // namespace lumoplot
