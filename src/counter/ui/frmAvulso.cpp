#include "frmAvulso.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateField.h"
#include "DialogPort.h"
#include "FileText.h"
#include "SystemTexts.h"
#include "clsCodBarra.h"

#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmAvulso::frmAvulso(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmAvulso"));
    setWindowTitle(QStringLiteral("Recebimento Avulso"));
    m_tipo = new QComboBox(this);
    m_tipo->setObjectName(QStringLiteral("cmbTipo"));
    for (const GuideKind& k :
         clsCodBarra::listar(ctx.db, clsCodBarra::Lista::Avulso).value_or(GuideKinds{}))
        m_tipo->addItem(k.descricao, k.idcod);
    m_valor = new QLineEdit(this);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_vencimento =
        new DateField(ctx.workingDate.isValid() ? ctx.workingDate : ctx.clock.today(), this);
    m_vencimento->setObjectName(QStringLiteral("dtpVencimento"));
    m_vencimento->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_vencimento->setCalendarPopup(true);
    m_parcela = new QLineEdit(this);
    m_parcela->setMaxLength(FileText::width(FileText::Field::Observacao));
    m_parcela->setObjectName(QStringLiteral("txtparcela"));
    m_obs = new QLineEdit(this);
    m_obs->setMaxLength(FileText::width(FileText::Field::Observacao));
    m_obs->setObjectName(QStringLiteral("txtobs"));
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Tipo:"), m_tipo);
    form->addRow(QStringLiteral("Valor:"), m_valor);
    form->addRow(QStringLiteral("Vencimento:"), m_vencimento);
    form->addRow(QStringLiteral("Parcela:"), m_parcela);
    form->addRow(QStringLiteral("Obs.:"), m_obs);
    auto* okButton = new QPushButton(QStringLiteral("&OK"), this);
    okButton->setObjectName(QStringLiteral("cmdOk"));
    okButton->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("&Cancelar"), this);
    connect(okButton, &QPushButton::clicked, this, &frmAvulso::ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    m_valor->setFocus();
}

void frmAvulso::ok() {
    if (m_valor->text().trimmed().isEmpty()) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ValorNaoInformado));
        m_valor->setFocus();
        return;
    }
    QString why;
    const auto valor = OneOffItem::valorDigitado(m_valor->text(), &why);
    if (!valor) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), why);
        m_valor->setFocus();
        return;
    }
    why = OneOffItem::textoProblema(m_parcela->text().trimmed(), m_obs->text().trimmed());
    if (!why.isEmpty()) {
        m_ctx.dialogs.warn(SystemTexts::aviso(), why);
        m_obs->setFocus();
        return;
    }
    m_item.idcod = m_tipo->currentData().toInt();
    m_item.valor = *valor;
    m_item.vencimento = m_vencimento->date();
    m_item.parcela = m_parcela->text().trimmed();
    m_item.obs = m_obs->text().trimmed();
    accept();
}
