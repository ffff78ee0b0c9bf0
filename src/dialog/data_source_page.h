// The Data Source page: where the points of the current data set come from.
#pragma once

#include "dialog/wizard_page.h"

#include <memory>

namespace Ui {
class TDataSourcePage;
}

namespace lumoplot {

class TDataSourcePage : public TWizardPage {
    Q_OBJECT

public:
    explicit TDataSourcePage(TWizardContext& context, QWidget* parent = nullptr);
    ~TDataSourcePage() override;

    void FillFrom(TSeries& series) override;
    void ShowNothing() override;

    /// Makes a text file the source of the current data set, names the data set after it and loads it.
    void AttachFile(const std::string& fileName);
    /// Loads the data set from its source when its description has changed since it was last loaded.
    void ReloadIfNeeded(TSeries& series);

private:
    void CheckDirectory();
    void Load(TSeries& series);

    std::unique_ptr<Ui::TDataSourcePage> m_ui;
};

} // namespace lumoplot
