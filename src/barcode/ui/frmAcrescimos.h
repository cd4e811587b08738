#pragma once

#include <QDialog>

class DialogPort;

// The charges notice: due date, the two charges and the amount due. It can only be left by OK.
class frmAcrescimos : public QDialog {
    Q_OBJECT
public:
    frmAcrescimos(DialogPort& dialogs, const QString& caption, const QStringList& lines,
                  QWidget* parent = nullptr);

public slots:
    void reject() override; // Esc

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    DialogPort& m_dialogs;
    bool m_ok = false;
};
