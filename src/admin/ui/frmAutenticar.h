#pragma once

#include <QDialog>
#include <functional>
#include <memory>

class AppContext;
class PrinterService;
class PrinterWorker;
class QLabel;
class QLineEdit;

// Stamps a loose document (one brought to the counter without a payment) on the authenticating
// printer: header, counter, date of the cash day and a typed amount. An administrator's act:
// each stamp is recorded with who allowed it, and shown as the last one only when the printer
// confirmed it.
class frmAutenticar : public QDialog {
    Q_OBJECT
public:
    frmAutenticar(AppContext& ctx, const QString& administrador, QWidget* parent = nullptr);
    // Asks for the administrator's password, then opens the screen.
    static void abrir(AppContext& ctx, QWidget* parent);
    ~frmAutenticar() override;

protected:
    void showEvent(QShowEvent* event) override;
    void done(int result) override;

private:
    void autenticar();
    void post(std::function<void(PrinterService&)> job);

    AppContext& m_ctx;
    QString m_administrador;
    std::unique_ptr<PrinterWorker> m_own; // when no printer is kept open by the counter
    bool m_portOpen = false;
    QLineEdit* m_valor; // mskvalor
    QLabel* m_ultima;   // lblUltima
};
