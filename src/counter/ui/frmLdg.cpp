#include "frmLdg.h"
#include "SystemTexts.h"

#include "DialogPort.h"
#include "TypedLine.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmLdg::frmLdg(DialogPort& dialogs, QWidget* parent) : QDialog(parent), m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmLdg"));
    setWindowTitle(QStringLiteral("Linha Digitável"));
    m_line = new QLineEdit(this);
    m_line->setObjectName(QStringLiteral("txtLinha"));
    m_line->setMinimumWidth(520);
    QFont f(QStringLiteral("Monospace"));
    f.setStyleHint(QFont::TypeWriter);
    f.setPointSize(12);
    m_line->setFont(f);
    auto* okButton = new QPushButton(QStringLiteral("&OK"), this);
    okButton->setObjectName(QStringLiteral("cmdOk"));
    okButton->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("&Cancelar"), this);
    connect(okButton, &QPushButton::clicked, this, &frmLdg::ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel(QStringLiteral("Digite ou cole a linha digitável (47 ou 48 números):"), this));
    layout->addWidget(m_line);
    layout->addLayout(buttons);
}

void frmLdg::ok() {
    const TypedLine::Result r = TypedLine::toBarcode(m_line->text());
    if (!r.ok()) {
        m_dialogs.critical(SystemTexts::aviso(), r.erro);
        m_line->setFocus();
        return;
    }
    m_barcode = r.barcode;
    accept();
}
