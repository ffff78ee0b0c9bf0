// Asks for the parts of a database server's address. It makes the text that the connection of a data set is
// described by; who shows it connects.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class TServerDialog;
}

namespace lumoplot {

class TServerDialog : public QDialog {
    Q_OBJECT

public:
    /// Starts with the parts of `address` where that names a server.
    explicit TServerDialog(const QString& address, QWidget* parent = nullptr);
    ~TServerDialog() override;

    /// Such as "postgresql://me@host:5433/lab" or "odbc:DSN=lab;UID=me", never with a password; empty while
    /// it would be no address.
    QString Address() const;
    QString Password() const;

private:
    void Fill(const QString& address);
    void ShowKind();
    void EnableControls();

    std::unique_ptr<Ui::TServerDialog> m_ui;
};

} // namespace lumoplot
