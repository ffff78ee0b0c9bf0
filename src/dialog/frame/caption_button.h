// A button whose caption has a letter that another control of its window answers to. The caption stays; what
// is drawn underlines another letter or none, and that one is the key.
#pragma once

#include <QPushButton>

namespace lumoplot {

class TCaptionButton : public QPushButton {
    Q_OBJECT

public:
    explicit TCaptionButton(QWidget* parent = nullptr) : QPushButton(parent) {}

    /// The caption with "&" before its key. To be called after the caption is set.
    void SetKeyedCaption(const QString& caption);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_keyed;
};

} // namespace lumoplot
