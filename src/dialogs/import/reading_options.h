// The choices of how a text is read in one line: separator, decimal sign, order of dates, encoding and header
// rows. Each begins as "Auto" with what was found behind it.
#pragma once

#include "graph/model/series.h"
#include "sources/spreadsheet/sheet_place.h"
#include "sources/text/text_format.h"

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

namespace Ui {
class TReadingOptions;
}

namespace lumoplot {

class TReadingOptions : public QWidget {
    Q_OBJECT

public:
    explicit TReadingOptions(QWidget* parent = nullptr);
    ~TReadingOptions() override;

    /// Shows what the data set's description fixes, and what was found of the rest; null where the source can
    /// not be read.
    void Show(const TSeries& series, const TTextFormat* found);
    /// The sheet of a spreadsheet that is chosen.
    std::string Sheet() const;
    /// Fixes in the description what is chosen, and leaves the rest to be found.
    void Store(TSeries& series) const;

Q_SIGNALS:
    /// The user has chosen something.
    void Picked();
    /// The user has chosen another sheet of the file.
    void SheetPicked();

private:
    void ShowSheets(const std::string& fileName, const std::string& chosen);
    void FillSheets(const std::vector<TBookSheet>& sheets);
    void ShowWhatIsOpen();

    std::unique_ptr<Ui::TReadingOptions> m_ui;
    std::string m_sheetsOf; ///< the file whose sheets are listed
};

} // namespace lumoplot
