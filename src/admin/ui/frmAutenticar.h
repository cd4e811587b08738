#pragma once

#include <QDialog>
#include <memory>

class AppContext;
class PrinterService;
class QLabel;
class QLineEdit;

// Stamps a loose document (one brought to the counter without a payment) on the authenticating
// printer: header, counter, date of the cash day and a typed amount. Nothing is recorded.
class frmAutenticar : public QDialog {
    Q_OBJECT
public:
    explicit frmAutenticar(AppContext& ctx, QWidget* parent = nullptr);
    ~frmAutenticar() override;

protected:
    void showEvent(QShowEvent* event) override;
    void done(int result) override;

private:
    void autenticar();

    AppContext& m_ctx;
    std::unique_ptr<PrinterService> m_own; // when no printer is kept open by the counter
    bool m_portOpen = false;
    QLineEdit* m_valor; // mskvalor
    QLabel* m_ultima;   // lblUltima
};
