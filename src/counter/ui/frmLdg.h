#pragma once

#include <QDialog>

class DialogPort;
class QLineEdit;

// A typed line for a guide whose barcode cannot be read: 47 or 48 digits, typed or pasted. A
// wrong check digit names its field; a good line becomes the 44-digit barcode.
class frmLdg : public QDialog {
    Q_OBJECT
public:
    explicit frmLdg(DialogPort& dialogs, QWidget* parent = nullptr);
    QString barcode() const { return m_barcode; }

private:
    void ok();

    DialogPort& m_dialogs;
    QLineEdit* m_line;
    QString m_barcode;
};
