#include "ScreenGallery.h"

#include "AppContext.h"
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
#include "frmData.h"
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
        QStringLiteral("frmGuiavencida"), OverdueHandler::kCaptionGuia,
        OverdueHandler::linhasGuia(QDate(2026, 1, 10), *Money::parse(QStringLiteral("1.234,56"))),
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

    // The morning's customers, so the day's list, its count and its total show.
    const struct {
        int idcod;
        const char* descricao;
        qint64 cents;
    } morning[] = {{1, "IPTU", 45210},
                   {2, "TAXAS DIVERSAS", 3124},
                   {3, "ISSQN", 128990},
                   {4, "AGUA E ESGOTO", 8915},
                   {7, "TAXA DE EXPEDIENTE", 1500},
                   {8, "CERTIDAO NEGATIVA", 3200}};
    for (int customer = 0; customer < 5; ++customer) {
        for (int i = 0; i <= customer % 3; ++i) {
            const auto& m = morning[(customer + i * 2) % 6];
            session.adicionarDigitado(m.idcod, QString::fromLatin1(m.descricao),
                                      Money::fromCents(m.cents + 100 * customer));
        }
        session.gravar();
    }

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

    session.gravar();
    frmFrente recorded(session, false);
    failures += !save(recorded, out, QStringLiteral("frmFrente-dia-com-recebimentos"));

    session.day().encerrar();
    frmFrente closed(session, false);
    failures += !save(closed, out, QStringLiteral("frmFrente-encerrado"));

    // A past day opened for consultation: the date stands out, what cannot act is disabled.
    ctx.workingDate = clock.today().addDays(-3);
    CounterSession past(ctx, nullptr);
    past.day().abrir();
    frmFrente consulta(past, true);
    failures += !save(consulta, out, QStringLiteral("frmFrente-consulta-dia-anterior"));

    err << QStringLiteral("Telas gravadas em %1\n").arg(QDir(out).absolutePath());
    return failures == 0 ? 0 : 1;
}
