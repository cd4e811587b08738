#include "ReportsMenu.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "CommandRegistry.h"
#include "DateField.h"
#include "DateUtil.h"
#include "DayBulletin.h"
#include "DialogPort.h"
#include "PeriodReport.h"
#include "ReportDocument.h"
#include "ReportPreview.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QTextDocument>

namespace {

// The first and last day of the period, the working date's month by default.
bool askPeriod(QWidget* parent, const QDate& dia, QDate& de, QDate& ate) {
    QDialog dlg(parent);
    dlg.setObjectName(QStringLiteral("PeriodoDialog"));
    dlg.setWindowTitle(QStringLiteral("Relatório do período"));
    auto* from = new DateField(QDate(dia.year(), dia.month(), 1), &dlg);
    from->setObjectName(QStringLiteral("dtpDe"));
    auto* to = new DateField(dia, &dlg);
    to->setObjectName(QStringLiteral("dtpAte"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dlg);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dlg, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dlg, &QDialog::reject);
    auto* form = new QFormLayout(&dlg);
    form->addRow(QStringLiteral("De:"), from);
    form->addRow(QStringLiteral("Até:"), to);
    form->addRow(buttons);
    if (dlg.exec() != QDialog::Accepted)
        return false;
    de = from->date();
    ate = to->date();
    return true;
}

} // namespace

QDialog* ReportsMenu::boletim(AppContext& ctx, const QDate& dia, QWidget* parent) {
    QString why;
    const auto b = DayBulletin::montar(ctx, dia, &why);
    if (!b) {
        ctx.dialogs.warn(SystemTexts::aviso(), why);
        return nullptr;
    }
    return new ReportPreview(
        ctx, ReportDocument::dia(*b), QStringLiteral("Boletim diário - %1").arg(DateUtil::br(dia)),
        QStringLiteral("boletim_%1").arg(dia.toString(QStringLiteral("yyyyMMdd"))), parent);
}

QDialog* ReportsMenu::periodo(AppContext& ctx, const QDate& de, const QDate& ate, QWidget* parent) {
    QString why;
    const auto p = PeriodReport::montar(ctx, de, ate, &why);
    if (!p) {
        ctx.dialogs.warn(SystemTexts::aviso(), why);
        return nullptr;
    }
    return new ReportPreview(
        ctx, ReportDocument::periodo(*p),
        QStringLiteral("Arrecadação de %1 a %2").arg(DateUtil::br(de), DateUtil::br(ate)),
        QStringLiteral("periodo_%1_%2")
            .arg(de.toString(QStringLiteral("yyyyMMdd")), ate.toString(QStringLiteral("yyyyMMdd"))),
        parent);
}

void ReportsMenu::add(CommandRegistry& registry, AppContext& ctx, std::function<QDate()> dia,
                      QWidget* parent) {
    const QString menu = QStringLiteral("&Relatórios");
    auto show = [](QDialog* dlg) {
        if (!dlg)
            return;
        dlg->setAttribute(Qt::WA_DeleteOnClose);
        dlg->exec();
    };
    registry.add(QStringLiteral("mnuBoletim"), menu, QStringLiteral("Boletim do dia..."),
                 [&ctx, dia, parent, show] { show(boletim(ctx, dia(), parent)); });
    registry.add(QStringLiteral("mnuPeriodo"), menu, QStringLiteral("Relatório do período..."),
                 [&ctx, dia, parent, show] {
                     QDate de;
                     QDate ate;
                     if (askPeriod(parent, dia(), de, ate))
                         show(periodo(ctx, de, ate, parent));
                 });
}
