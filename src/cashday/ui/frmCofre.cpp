#include "frmCofre.h"

#include "AppContext.h"
#include "CashSafe.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

frmCofre::frmCofre(AppContext& ctx, qint32 idMovimento, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_idMovimento(idMovimento) {
    setObjectName(QStringLiteral("frmCofre"));
    setWindowTitle(QStringLiteral("Cofre"));
    m_saldo = new QLineEdit(this);
    m_saldo->setObjectName(QStringLiteral("txtsaldo"));
    m_saldo->setReadOnly(true);
    m_saldo->setAlignment(Qt::AlignRight);
    QFont big = m_saldo->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    m_saldo->setFont(big);
    m_entrada = new QRadioButton(QStringLiteral("Entrada"), this);
    m_entrada->setObjectName(QStringLiteral("optEntrada"));
    m_entrada->setChecked(true);
    m_saida = new QRadioButton(QStringLiteral("Saida"), this);
    m_saida->setObjectName(QStringLiteral("optSaida"));
    m_valor = new QLineEdit(this);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setAlignment(Qt::AlignRight);
    auto* apply = new QPushButton(QStringLiteral("&Gravar"), this);
    apply->setObjectName(QStringLiteral("Command1"));
    apply->setDefault(true);
    connect(apply, &QPushButton::clicked, this, &frmCofre::aplicar);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* direction = new QHBoxLayout;
    direction->addWidget(m_entrada);
    direction->addWidget(m_saida);
    direction->addStretch();
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Saldo do cofre (R$):"), m_saldo);
    form->addRow(QStringLiteral("Movimento:"), direction);
    form->addRow(QStringLiteral("Valor:"), m_valor);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(apply);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    resize(380, 180);

    const auto saldo = CashSafe::saldo(ctx);
    m_saldo->setText(saldo ? saldo->format() : QString());
    apply->setEnabled(saldo.has_value());
    m_valor->setFocus();
}

void frmCofre::aplicar() {
    const auto r = CashSafe::movimentar(
        m_ctx, m_idMovimento,
        m_saida->isChecked() ? CashSafe::Direction::Out : CashSafe::Direction::In, m_valor->text());
    if (r.outcome == CashSafe::Outcome::Done) {
        m_saldo->setText(r.saldo.format());
        m_valor->clear();
    } else if (r.outcome == CashSafe::Outcome::InvalidValue) {
        m_valor->clear();
    }
    m_valor->setFocus();
}
