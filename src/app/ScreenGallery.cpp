#include "ScreenGallery.h"

#include "AppContext.h"
#include "CashCount.h"
#include "CashEntry.h"
#include "CashSafe.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "IniFile.h"
#include "OverdueHandler.h"
#include "PasswordHash.h"
#include "QtDialogPort.h"
#include "ScriptedDialogPort.h"
#include "Startup.h"
#include "clsUsuarios.h"
#include "frmAcrescimos.h"
#include "frmAvulso.h"
#include "frmCofre.h"
#include "frmData.h"
#include "frmFeriados.h"
#include "frmFrente.h"
#include "frmJuros.h"
#include "frmLancaTemp.h"
#include "frmLancamentos.h"
#include "frmLdg.h"
#include "frmSangria.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextStream>

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

// The cash day while it is open: the opening float, a withdrawal of two items being recorded,
// the day's withdrawals, the safe and the provisional count.
int saveOpenDayScreens(AppContext& ctx, const clsMovimento& mov, const QString& out) {
    int failures = 0;
    CashEntry opening(ctx, mov.ID, EntryKind::CashIn);
    opening.incluirItens(QString());
    opening.gravarItem(100, QString(), QStringLiteral("200,00"));
    CashEntry payment(ctx, mov.ID, EntryKind::PaymentOut);
    payment.incluirItens(QStringLiteral("EMPENHO 0412/2026 - MATERIAL DE LIMPEZA"));
    payment.gravarItem(102, QStringLiteral("NE 0412"), QStringLiteral("85,40"));

    frmSangria sangria(ctx, mov.ID, EntryKind::Withdrawal);
    sangria.findChild<QPushButton*>(QStringLiteral("cmdIncluirItens"))->click();
    auto item = [&sangria](int row, const QString& numero, const QString& valor) {
        sangria.findChild<QComboBox*>(QStringLiteral("cmbEspecie"))->setCurrentIndex(row);
        sangria.findChild<QLineEdit*>(QStringLiteral("txtnumero"))->setText(numero);
        sangria.findChild<QLineEdit*>(QStringLiteral("mskValorItem"))->setText(valor);
        sangria.findChild<QPushButton*>(QStringLiteral("cmdSave"))->click();
    };
    item(0, QString(), QStringLiteral("100,00"));
    item(1, QStringLiteral("123"), QStringLiteral("50,00"));
    failures += !save(sangria, out, QStringLiteral("frmSangria-retirada"));
    sangria.findChild<QTabWidget*>(QStringLiteral("SSTab1"))->setCurrentIndex(1);
    failures += !save(sangria, out, QStringLiteral("frmSangria-lista"));

    CashSafe::movimentar(ctx, mov.ID, CashSafe::Direction::In, QStringLiteral("1.500,00"));
    frmCofre cofre(ctx, mov.ID);
    cofre.findChild<QRadioButton*>(QStringLiteral("optSaida"))->setChecked(true);
    cofre.findChild<QLineEdit*>(QStringLiteral("mskvalor"))->setText(QStringLiteral("50,00"));
    failures += !save(cofre, out, QStringLiteral("frmCofre"));

    frmLancaTemp temp(ctx, mov);
    auto* especie = temp.findChild<QComboBox*>(QStringLiteral("Combo1"));
    for (const auto& [row, valor] : {std::pair{0, "1.704,97"}, std::pair{1, "170,00"}}) {
        especie->setCurrentIndex(row);
        temp.findChild<QLineEdit*>(QStringLiteral("mskvalor"))->setText(QLatin1String(valor));
        temp.findChild<QPushButton*>(QStringLiteral("Command5"))->click();
    }
    failures += !save(temp, out, QStringLiteral("frmLancaTemp"));
    return failures;
}

// The count of the closed day, ten reais short.
int saveCountScreen(AppContext& ctx, const clsMovimento& mov, const QString& out) {
    CashCount count(ctx, mov);
    count.adicionar(100, QString(), QStringLiteral("1.694,97"));
    count.adicionar(101, QStringLiteral("000123"), QStringLiteral("50,00"));
    count.adicionar(101, QStringLiteral("004567"), QStringLiteral("120,00"));
    frmLancamentos dlg(ctx, mov.MDATA);
    return !save(dlg, out, QStringLiteral("frmLancamentos"));
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
    session.ler(QStringLiteral("81830000012345604272026011000000000000000000"));
    session.somaAvulso({7, QString(), QStringLiteral("15,00"), QStringLiteral("20261123"),
                        QStringLiteral("1/1"), QString()});
    session.tender(QStringLiteral("2.000,00"));
    frmFrente four(session, false);
    failures += !save(four, out, QStringLiteral("frmFrente-quatro-itens"));

    failures += saveOverdueScreens(ctx, out);

    session.gravar(); // the customer pays: the day has receipts
    session.list().clear();
    session.resetPayment();
    failures += saveOpenDayScreens(ctx, session.day().movimento(), out);
    session.day().encerrar();
    failures += saveCountScreen(ctx, session.day().movimento(), out);
    frmFrente closed(session, false);
    failures += !save(closed, out, QStringLiteral("frmFrente-encerrado"));

    err << QStringLiteral("Telas gravadas em %1\n").arg(QDir(out).absolutePath());
    return failures == 0 ? 0 : 1;
}
