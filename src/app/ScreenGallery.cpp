#include "ScreenGallery.h"

#include "AppContext.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "IniFile.h"
#include "OverdueHandler.h"
#include "PasswordHash.h"
#include "QtDialogPort.h"
#include "ReceiptCorrections.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "clsUsuarios.h"
#include "frmAcrescimos.h"
#include "frmAvulso.h"
#include "frmCorrigeGuia.h"
#include "frmData.h"
#include "frmExbi.h"
#include "frmFeriados.h"
#include "frmFrente.h"
#include "frmJuros.h"
#include "frmLdg.h"

#include <QApplication>
#include <QDateEdit>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTreeWidget>

namespace {

bool save(QWidget& w, const QString& dir, const QString& name) {
    w.show();
    QApplication::processEvents();
    const bool ok = w.grab().save(QDir(dir).filePath(name + QStringLiteral(".png")));
    w.hide();
    return ok;
}

// The overdue states: consent, charges, the interest calculator with a result, one-off items.
int saveOverdueScreens(AppContext& ctx, const QString& out) {
    int failures = 0;
    DialogAnswer answer;
    std::unique_ptr<QDialog> consent(QtDialogPort::createNotice(
        QStringLiteral("frmGuiavencida"), OverdueHandler::kCaptionGuia, OverdueHandler::kLinhasGuia,
        DialogButtons::YesNo, &answer, nullptr));
    failures += !save(*consent, out, QStringLiteral("frmGuiavencida"));
    const auto e = Acrescimos::Calcula_acrescimos(QDate(2026, 1, 10), ctx.workingDate,
                                                  *Money::parse(QStringLiteral("1.234,56")), 1);
    frmAcrescimos charges(ctx.dialogs, QStringLiteral("Acréscimos"),
                          OverdueHandler::linhasAcrescimos(*e, ctx.clock.today()));
    failures += !save(charges, out, QStringLiteral("frmAcrescimos"));
    frmJuros calc(ctx);
    calc.findChild<QRadioButton*>(QStringLiteral("Option2"))->setChecked(true);
    calc.findChild<QDateEdit*>(QStringLiteral("dtpVencimento"))->setDate(QDate(2026, 9, 15));
    calc.findChild<QLineEdit*>(QStringLiteral("mskprestacao"))->setText(QStringLiteral("350,00"));
    calc.findChild<QPushButton*>(QStringLiteral("Command2"))->click();
    failures += !save(calc, out, QStringLiteral("frmJuros"));
    frmAvulso avulso(ctx);
    avulso.findChild<QLineEdit*>(QStringLiteral("mskvalor"))->setText(QStringLiteral("15,00"));
    avulso.findChild<QLineEdit*>(QStringLiteral("txtparcela"))->setText(QStringLiteral("1/1"));
    failures += !save(avulso, out, QStringLiteral("frmAvulso"));
    frmFeriados feriados(ctx);
    failures += !save(feriados, out, QStringLiteral("frmFeriados"));
    frmLdg ldg(ctx.dialogs);
    ldg.findChild<QLineEdit*>(QStringLiteral("txtLinha"))
        ->setText(QStringLiteral("00191.23454 00000.000000 00000.000000 3 16510000008915"));
    failures += !save(ldg, out, QStringLiteral("frmLdg"));
    return failures;
}

// Corrections: the customer's items recorded, one changed and one reversed, so the list, the
// selected receipt and the log all show something.
int saveCorrectionScreens(AppContext& ctx, CounterSession& session, const QString& out) {
    const auto rows = session.gravar();
    if (!rows || rows->size() < 4)
        return 1;
    ReceiptCorrections c(ctx, nullptr);
    const RecordedReceipt& avulso = rows->at(3);
    c.alterar(
        avulso.idrecebe,
        {qint16(avulso.item.tipo), avulso.autentica, avulso.item.codbarra, Money::fromReais(25)},
        QStringLiteral("Valor digitado errado"));
    c.estornar(rows->at(0).idrecebe, QStringLiteral("Guia paga em duplicidade"));
    int failures = 0;
    frmCorrigeGuia form(ctx, nullptr);
    auto* list = form.findChild<QTreeWidget*>(QStringLiteral("ListView1"));
    list->setCurrentItem(list->topLevelItem(1));
    form.findChild<QPushButton*>(QStringLiteral("cmdSelecionar"))->click();
    form.findChild<QLineEdit*>(QStringLiteral("mskvalor"))->setText(QStringLiteral("98,15"));
    form.findChild<QLineEdit*>(QStringLiteral("txtmotivo"))
        ->setText(QStringLiteral("Valor conferido com o boleto"));
    failures += !save(form, out, QStringLiteral("frmCorrigeGuia"));
    frmExbi exbi(ctx);
    failures += !save(exbi, out, QStringLiteral("frmExbi"));
    return failures;
}

} // namespace

int runScreens(int argc, char** argv) {
    QApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = QApplication::arguments();
    const QString out = args.size() > 2 ? args[2] : QStringLiteral("screens");
    QDir().mkpath(out);

    QTemporaryDir folder;
    ScriptedDialogPort dialogs;
    FixedClock clock(QDateTime(QDate(2026, 11, 23), QTime(10, 15, 30)));
    AppContext ctx(folder.path(), dialogs, clock);
    IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("1"),
                   ctx.iniPath());
    IniFile::write(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"),
                   ctx.iniPath());
    if (!Startup::Abre_conexao(ctx, true) || !DemoData::seed(ctx, nullptr, nullptr)) {
        err << "Não foi possível preparar os dados das telas.\n";
        return 1;
    }
    ctx.reloadSettings();
    ctx.userName = QStringLiteral("MARIA DA SILVA");
    ctx.workingDate = clock.today();
    dialogs.defaultAnswer = DialogAnswer::Yes;

    int failures = 0;
    frmData date(ctx);
    failures += !save(date, out, QStringLiteral("frmData"));

    CounterSession session(ctx, nullptr);
    session.day().abrir();
    frmFrente empty(session, false);
    failures += !save(empty, out, QStringLiteral("frmFrente-vazio"));

    // A customer as the cashier builds one: two guides on time, one overdue (consent given),
    // a one-off item, and the amount tendered.
    session.ler(QStringLiteral("81660000003124004262026113058888888888888888"));
    session.ler(QStringLiteral("00193165100000089151234500000000000000000000"));
    if (session.ler(QStringLiteral("81830000012345604272026011000000000000000000"))
            .precisaConsentimento)
        session.continuar(true);
    session.somaAvulso({7, Money::fromReais(15), clock.today(), QStringLiteral("1/1"), QString()});
    session.tender(Money::fromReais(2000));
    frmFrente four(session, false);
    failures += !save(four, out, QStringLiteral("frmFrente-quatro-itens"));

    failures += saveOverdueScreens(ctx, out);
    failures += saveCorrectionScreens(ctx, session, out);

    session.list().clear();
    session.resetPayment();
    session.day().encerrar();
    frmFrente closed(session, false);
    failures += !save(closed, out, QStringLiteral("frmFrente-encerrado"));

    err << QStringLiteral("Telas gravadas em %1\n").arg(QDir(out).absolutePath());
    return failures == 0 ? 0 : 1;
}
