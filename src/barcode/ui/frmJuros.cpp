#include "frmJuros.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateField.h"
#include "DialogPort.h"
#include "InterestCalculator.h"

#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

frmJuros::frmJuros(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmJuros"));
    setWindowTitle(QStringLiteral("Calcular Juros"));
    // Created in the order the cashier tabs through them.
    createInputs();
    QVBoxLayout* options = buildOptions();
    createResults();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buildForm(options));
    layout->addLayout(buildButtons());
}

void frmJuros::createInputs() {
    auto date = [this](const char* name, const QDate& d) {
        auto* e = new DateField(d, this);
        e->setObjectName(QLatin1String(name));
        e->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        e->setCalendarPopup(true);
        return e;
    };
    m_hoje = date("dtphoje", m_ctx.workingDate.isValid() ? m_ctx.workingDate : m_ctx.clock.today());
    m_vencimento = date("dtpVencimento", m_hoje->date());
    m_prestacao = new QLineEdit(this);
    m_prestacao->setObjectName(QStringLiteral("mskprestacao"));
    m_taxa = new QLineEdit(this);
    m_taxa->setObjectName(QStringLiteral("txtjuros"));
}

QVBoxLayout* frmJuros::buildOptions() {
    const char* names[] = {"Option1", "Option2", "Option3"};
    const QString texts[] = {QStringLiteral("Juros por dia (0,20%)"),
                             QStringLiteral("Mora por dia (0,33%) + 1% ao mês"),
                             QStringLiteral("2% + 1%")};
    const QString rates[] = {QStringLiteral("0,20"), QStringLiteral("0,33"),
                             QStringLiteral("2,00")};
    auto* options = new QVBoxLayout;
    for (int i = 0; i < 3; ++i) {
        m_opcoes[i] = new QRadioButton(texts[i], this);
        m_opcoes[i]->setObjectName(QLatin1String(names[i]));
        connect(m_opcoes[i], &QRadioButton::toggled, this, [this, rate = rates[i]](bool on) {
            if (on)
                m_taxa->setText(rate);
        });
        options->addWidget(m_opcoes[i]);
    }
    return options;
}

void frmJuros::createResults() {
    auto result = [this](const char* name) {
        auto* l = new QLabel(this);
        l->setObjectName(QLatin1String(name));
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return l;
    };
    m_dias = result("lbldias");
    m_meses = result("lblmes");
    m_multa = result("lblmulta");
    m_juros = result("lbljuros");
    m_total = result("lbltotal");
}

QFormLayout* frmJuros::buildForm(QVBoxLayout* options) {
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Data do cálculo:"), m_hoje);
    form->addRow(QStringLiteral("Vencimento:"), m_vencimento);
    form->addRow(QStringLiteral("Prestação:"), m_prestacao);
    form->addRow(QStringLiteral("Taxa (%):"), m_taxa);
    form->addRow(options);
    form->addRow(QStringLiteral("Dias de Atraso..:"), m_dias);
    form->addRow(QStringLiteral("Meses de Atraso.:"), m_meses);
    form->addRow(QStringLiteral("Mora / Multa...:"), m_multa);
    form->addRow(QStringLiteral("Total Juros....:"), m_juros);
    form->addRow(QStringLiteral("Total:"), m_total);
    return form;
}

QHBoxLayout* frmJuros::buildButtons() {
    auto* calc = new QPushButton(QStringLiteral("&Calcular"), this);
    calc->setObjectName(QStringLiteral("Command2"));
    calc->setDefault(true);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    connect(calc, &QPushButton::clicked, this, &frmJuros::calcular);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(calc);
    buttons->addWidget(close);
    return buttons;
}

void frmJuros::calcular() {
    InterestCalculator::Input in;
    for (int i = 0; i < 3; ++i)
        if (m_opcoes[i]->isChecked())
            in.opcao = i + 1;
    in.hoje = m_hoje->date();
    in.vencimento = m_vencimento->date();
    in.prestacao = Money::parse(m_prestacao->text());
    in.taxa = Money::parse(m_taxa->text());
    const auto r = InterestCalculator::calcular(in);
    if (!r.ok()) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), r.erro);
        return;
    }
    m_dias->setText(QString::number(r.dias));
    m_meses->setText(QString::number(r.meses));
    m_multa->setText(r.multa.format());
    m_juros->setText(r.juros.format());
    m_total->setText(r.total.format());
}
