#include "frmLancaTemp.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "Tone.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

frmLancaTemp::frmLancaTemp(AppContext& ctx, const clsMovimento& mov, QWidget* parent)
    : QDialog(parent), m_ctx(ctx), m_mov(mov) {
    setObjectName(QStringLiteral("frmLancaTemp"));
    setWindowTitle(QStringLiteral("Conferência Temporária de Caixa"));
    auto* notice = new QLabel(SystemTexts::text(SystemText::AvisoContagemTemporaria), this);
    notice->setObjectName(QStringLiteral("lblAviso"));
    notice->setWordWrap(true);
    Tone::set(notice, "alerta");
    QFont bold = notice->font();
    bold.setBold(true);
    notice->setFont(bold);
    auto* dia = new QLabel(
        QStringLiteral("Caixa dia: ") + mov.MDATA.toString(QStringLiteral("dd - MM - yyyy")), this);
    dia->setObjectName(QStringLiteral("lblDia"));
    m_panel = new CountPanel(ctx, this);
    connect(m_panel->del, &QAction::triggered, this, &frmLancaTemp::excluir);
    connect(m_panel->add, &QPushButton::clicked, this, &frmLancaTemp::adicionar);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(dia);
    layout->addWidget(notice);
    layout->addWidget(m_panel, 1);
    layout->addLayout(bottom);
    resize(860, 440);
    recalcular();
    m_panel->valor->setFocus();
}

void frmLancaTemp::recalcular() {
    clsMovimento fresh = m_mov;
    fresh.SQLSelect(m_mov.ID); // the supplies as they are now
    QList<Money> values;
    m_panel->lista->clear();
    for (int i = 0; i < m_lines.size(); ++i) {
        values << m_lines[i].valor;
        m_panel->addLine(i + 1, m_lines[i].especie, m_lines[i].numero, m_lines[i].valor);
    }
    const auto c = CashCount::provisoria(m_ctx, fresh, values);
    if (!c) {
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmLancaTemp")});
        return;
    }
    m_panel->showFigures(*c, true);
}

void frmLancaTemp::adicionar() {
    const auto v =
        CashCount::validar(m_ctx, m_panel->especie->currentData().toInt(), m_panel->valor->text());
    if (!v) {
        m_panel->valueRefused();
        return;
    }
    m_lines.append({m_panel->especie->currentText(), m_panel->numero->text().trimmed(), *v});
    recalcular();
    m_panel->lineTaken();
}

void frmLancaTemp::excluir() {
    QTreeWidgetItem* item = m_panel->lista->currentItem();
    if (!item) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CliqueNoItem));
        return;
    }
    if (!askNotice(m_ctx.dialogs,
                   SystemTexts::notice(SystemText::PerguntaExcluirItemContagem).arg(item->text(0))))
        return;
    m_lines.removeAt(m_panel->lista->indexOfTopLevelItem(item));
    recalcular();
}
