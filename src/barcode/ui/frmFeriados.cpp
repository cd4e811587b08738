#include "frmFeriados.h"

#include "AppContext.h"
#include "Clock.h"
#include "DateField.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "HolidayCalendar.h"
#include "SystemTexts.h"
#include "clsFeriado.h"

#include <QApplication>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

frmFeriados::frmFeriados(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmFeriados"));
    setWindowTitle(QStringLiteral("Feriados"));
    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lwFeriados"));
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({QStringLiteral("Código"), QStringLiteral("Feriado")});
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_data = new DateField(ctx.clock.today(), this);
    m_data->setObjectName(QStringLiteral("dtpData"));
    m_data->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_data->setCalendarPopup(true);
    auto button = [this](const char* name, const QString& text, void (frmFeriados::*slot)()) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QLatin1String(name));
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    auto* row = new QHBoxLayout;
    row->addWidget(m_data);
    row->addWidget(button("cmdGravar", QStringLiteral("&Gravar"), &frmFeriados::gravar));
    row->addWidget(button("cmdExcluir", QStringLiteral("&Excluir"), &frmFeriados::excluir));
    row->addWidget(button("cmdLimpar", QStringLiteral("Excluir &todos"), &frmFeriados::limpar));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addLayout(row);
    resize(420, 420);
    reload();
}

void frmFeriados::reload() {
    m_list->clear();
    const auto holidays = HolidayCalendar(m_ctx.db).listar();
    if (!holidays)
        return;
    for (const clsFeriado& f : *holidays) {
        auto* item = new QTreeWidgetItem(
            {QStringLiteral("%1").arg(f.ID, 4, 10, QLatin1Char('0')), DateUtil::br(f.FERIADO)});
        item->setData(0, Qt::UserRole, f.ID);
        m_list->addTopLevelItem(item);
        if (m_list->topLevelItemCount() % 50 == 0)
            QApplication::processEvents(); // long calendars stay responsive
    }
}

void frmFeriados::gravar() {
    const Outcome done = HolidayCalendar::gravar(m_ctx, m_data->date());
    tell(m_ctx.dialogs, done.notice);
    if (done)
        reload();
}

void frmFeriados::excluir() {
    if (!askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaExcluirItem)))
        return;
    QTreeWidgetItem* item = m_list->currentItem();
    const Outcome done =
        HolidayCalendar::excluir(m_ctx, item ? item->data(0, Qt::UserRole).toInt() : 0);
    tell(m_ctx.dialogs, done.notice);
    if (done)
        reload();
}

void frmFeriados::limpar() {
    if (!askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaExcluirTodosFeriados)))
        return;
    tell(m_ctx.dialogs, HolidayCalendar::excluirTodos(m_ctx).notice);
    reload();
}
