// The group of the General page that says where the standard errors of Y of a data set come from.
#pragma once

#include "dialog/common/wizard_page.h"

#include <QGroupBox>
#include <memory>

namespace Ui {
class TYErrorGroup;
}

namespace lumoplot {

class TYErrorGroup : public QGroupBox {
    Q_OBJECT

public:
    explicit TYErrorGroup(TWizardContext& context, QWidget* parent = nullptr);
    ~TYErrorGroup() override;

    void FillFrom(const TSeries& series);

private:
    void ConnectControls();
    void ListDataSets(const TSeries& series);
    void ShowState(const TSeries& series);
    void EnableControls();
    void SetByRule();
    void SetByValue();
    void SetFromDataSet();
    template <class TAction>
    void Edit(TMergeKey key, TAction action);

    TWizardContext& m_context;
    std::unique_ptr<Ui::TYErrorGroup> m_ui;
};

} // namespace lumoplot
