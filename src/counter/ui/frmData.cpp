#include "frmData.h"

#include "AppContext.h"
#include "Clock.h"

#include "DateField.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmData::frmData(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmData"));
    setWindowTitle(QStringLiteral("Tolvane - Abertura do Caixa"));
    setMinimumWidth(560); // the whole title in the title bar, the explanation in two lines

    auto* explain = new QLabel(
        QStringLiteral("A data apresentada refere-se ao dia atual, caso haja necessidade de "
                       "consulta de outro dia selecione a data ao lado:"),
        this);
    explain->setWordWrap(true);
    m_senha = new QLineEdit(this);
    m_senha->setObjectName(QStringLiteral("txtsenha"));
    m_senha->setEchoMode(QLineEdit::Password);
    m_data = new DateField(ctx.clock.today(), this);
    m_data->setObjectName(QStringLiteral("dtpData"));
    m_data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_data->setCalendarPopup(true);
    m_consultar = new QPushButton(QStringLiteral("&Consultar"), this);
    m_consultar->setObjectName(QStringLiteral("cmdConsultar"));
    m_abrir = new QPushButton(QStringLiteral("&Abrir Caixa"), this);
    m_abrir->setObjectName(QStringLiteral("cmdAbrirCaixa"));
    m_abrir->setDefault(true);

    auto* grid = new QGridLayout;
    auto* lblSenha = new QLabel(QStringLiteral("Senha de Acesso:"), this);
    lblSenha->setBuddy(m_senha);
    auto* lblData = new QLabel(QStringLiteral("Data Selecionada:"), this);
    lblData->setBuddy(m_data);
    grid->addWidget(lblSenha, 0, 0);
    grid->addWidget(m_senha, 0, 1);
    grid->addWidget(lblData, 1, 0);
    grid->addWidget(m_data, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_consultar);
    buttons->addWidget(m_abrir);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explain);
    layout->addLayout(grid);
    layout->addLayout(buttons);

    connect(m_consultar, &QPushButton::clicked, this,
            [this] { act(DateScreenLogic::Action::Consultar); });
    connect(m_abrir, &QPushButton::clicked, this,
            [this] { act(DateScreenLogic::Action::AbrirCaixa); });
    m_senha->setFocus();
}

void frmData::act(DateScreenLogic::Action action) {
    if (!DateScreenLogic::proceed(m_ctx, m_senha->text(), m_data->date(), action)) {
        m_senha->selectAll();
        m_senha->setFocus();
        return;
    }
    m_senha->clear();
    emit prosseguir(action);
}
