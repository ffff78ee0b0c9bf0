// The progress interface of long work as a small window with a Cancel button. It appears when the work takes
// longer than a moment.
#pragma once

#include "support/progress.h"

#include <QElapsedTimer>
#include <QProgressDialog>

namespace lumoplot {

class TProgressBox final : public TProgress {
public:
    explicit TProgressBox(QWidget* parent);

    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override;
    [[nodiscard]] bool StepTo(std::int64_t position) override;

private:
    QProgressDialog m_dialog;
    QElapsedTimer m_sinceShown;
    std::int64_t m_minimum = 0;
    std::int64_t m_maximum = 0;
};

} // namespace lumoplot
