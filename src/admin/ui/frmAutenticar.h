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
    void post(std::function<void(PrinterService&)> job);

    AppContext& m_ctx;
    std::unique_ptr<PrinterWorker> m_own; // when no printer is kept open by the counter
    bool m_portOpen = false;
    QLineEdit* m_valor; // mskvalor
    QLabel* m_ultima;   // lblUltima
};
