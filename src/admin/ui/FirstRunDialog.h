#pragma once

#include <QDialog>

class AppContext;
class QCheckBox;
class QLineEdit;

// The first run on a computer with no folder of the program: the town hall's name and header,
// the counter's letter and the first administrator's password, typed twice and never shown.
// Creating prepares the folder through the same core as `tolvane iniciar`; on request it adds
// the demonstration's kinds of guide and the sheet of sample guides to scan.
class FirstRunDialog : public QDialog {
    Q_OBJECT
public:
    explicit FirstRunDialog(AppContext& ctx, QWidget* parent = nullptr);

    // What to tell once the dialog has closed: the folder, who logs in, where the sheet is.
    QString resumo() const { return m_resumo; }

    void accept() override;

    // Asks whether to create the folder, then shows the dialog. False when the person declines
    // either (the program then ends); `resumo` is what to tell once the date screen is up.
    static bool offer(AppContext& ctx, QString* resumo);

private:
    AppContext& m_ctx;
    QLineEdit* m_pref;
    QLineEdit* m_cabecalho;
    QLineEdit* m_guiche;
    QLineEdit* m_senha;
    QLineEdit* m_confirma;
    QCheckBox* m_exemplo;
    QString m_resumo;
};
