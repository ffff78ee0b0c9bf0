// The page that filters a frequency band of the current data set. The settings belong to the page and outlive
// the data sets; Apply replaces the data set's points, which is a step of the session.
#pragma once

#include "data/filter/band_filter.h"
#include "dialog/common/wizard_page.h"

#include <QTimer>
#include <memory>
#include <optional>

class QLineEdit;

namespace Ui {
class TFilteringPage;
}

namespace lumoplot {

/// Of a data set and of the one that its X are from, or 0.
using TDataStamps = std::pair<std::uint64_t, std::uint64_t>;

class TFilteringPage : public TWizardPage {
    Q_OBJECT

public:
    explicit TFilteringPage(TWizardContext& context, QWidget* parent = nullptr);
    ~TFilteringPage() override;

    const TBandFilterSettings& Settings() const { return m_settings; }

    void FillFrom(TSeries& series) override;
    void ShowNothing() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// What the filter sees of a data set, kept until its data or the block size change.
    struct TSeen {
        TDataStamps DataStamp;
        int CountEvery;
        TFilterSamples Samples;
    };

    void ShowSettings();
    void ConnectSettings();
    void ConnectNumber(QLineEdit* edit, double TBandFilterSettings::*setting);
    void SettingsChanged();
    bool NumbersAreValid() const;
    bool IsBandAbove(const TFilterSamples& samples) const;
    void EnableButtons();

    void Apply();
    void Filter(TSeries& series);
    bool LoadAllPoints(TSeries& series);
    void LoadToPreview(TSeries& series);

    void SchedulePreview(int delayMs = 0);
    void UpdatePreview();
    void ShowState(const QString& text);
    const TFilterSamples& SamplesOf(const TSeries& series);
    QString StateText(const TFilterSamples& samples) const;
    QString ResultText(const TFilterSamples& samples) const;

    std::unique_ptr<Ui::TFilteringPage> m_ui;
    TBandFilterSettings m_settings;
    std::optional<TSeen> m_seen;
    std::uint64_t m_loadTried = 0; ///< the data that reading all rows was tried for
    QTimer m_previewTimer;
};

} // namespace lumoplot
