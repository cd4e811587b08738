#include "ScreenGallery.h"

#include "AppContext.h"
#include "AppShell.h"
#include "BrazilianLocale.h"
#include "CalculatorDialog.h"
#include "CashCount.h"
#include "CashEntry.h"
#include "CashSafe.h"
#include "CheckDigits.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "ExportMarks.h"
#include "FirstRunDialog.h"
#include "IniFile.h"
#include "OutputPath.h"
#include "OverdueHandler.h"
#include "PasswordHash.h"
#include "PendingStampsDialog.h"
#include "QtDialogPort.h"
#include "ReceiptCorrections.h"
#include "ReportsMenu.h"
#include "ReversalUndoDialog.h"
#include "ScriptedDialogPort.h"
#include "Skin.h"
#include "Startup.h"
#include "TitleRoom.h"
#include "UserAccounts.h"
#include "clsRecebimentos.h"
#include "clsUsuarios.h"
#include "frmAcrescimos.h"
#include "frmAtualiza.h"
#include "frmAutenticar.h"
#include "frmAvulso.h"
#include "frmCodBarra.h"
#include "frmCofre.h"
#include "frmCorrigeGuia.h"
#include "frmData.h"
#include "frmExbi.h"
#include "frmExportar.h"
#include "frmFeriados.h"
#include "frmFrente.h"
#include "frmJuros.h"
#include "frmLancaTemp.h"
#include "frmLancamentos.h"
#include "frmLdg.h"
#include "frmOpcoes.h"
#include "frmSangria.h"
#include "frmSkin.h"
#include "frmUsuarios.h"

#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTreeWidget>

namespace {

const QSize kScreen(1366, 768); // the smallest screen a counter has, wide

// Each image is a new file: an earlier one, a link or a FIFO under its name is left alone.
bool save(QWidget& w, const QString& dir, const QString& name) {
    const QString path = QDir(dir).filePath(name + QStringLiteral(".png"));
    if (const QString why = OutputPath::problem(path); !why.isEmpty()) {
        QTextStream(stderr) << why << "\n";
        return false;
    }
    if (qobject_cast<QMainWindow*>(&w))
        w.resize(kScreen); // the counter fills the screen, as it opens maximised
    w.show();
    QApplication::processEvents();
    QApplication::processEvents(); // windows widened for their titles settle
    if (w.width() > kScreen.width() || w.height() > kScreen.height())
        QTextStream(stderr)
            << name
            << QStringLiteral(": %1x%2 não cabe em 1366x768\n").arg(w.width()).arg(w.height());
    QByteArray png;
    QBuffer buffer(&png);
    bool ok = buffer.open(QIODevice::WriteOnly) && w.grab().save(&buffer, "PNG");
    w.hide();
    QFile f(path);
    ok = ok && OutputPath::createNew(f) && f.write(png) == png.size() && f.flush();
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
    CalculatorDialog calculator;
    failures += !save(calculator, out, QStringLiteral("CalculatorDialog"));
    frmFeriados feriados(ctx);
    failures += !save(feriados, out, QStringLiteral("frmFeriados"));
    frmLdg ldg(ctx.dialogs);
    ldg.findChild<QLineEdit*>(QStringLiteral("txtLinha"))
        ->setText(QStringLiteral("00191.23454 00000.000000 00000.000000 3 16510000008915"));
    failures += !save(ldg, out, QStringLiteral("frmLdg"));
    return failures;
}

// A water-bill slip (kind 12345) of bank 001 with its own nosso número.
QString waterSlip(int factor, qint64 cents, int n) {
    const QString body = QStringLiteral("0019") + QString::number(factor) +
                         QString::number(cents).rightJustified(10, QLatin1Char('0')) +
                         QStringLiteral("12345000") +
                         QString::number(n).rightJustified(17, QLatin1Char('0'));
    return body.left(4) + QString::number(Modulo11_boleto(body)) + body.mid(4);
}

// The export screen with both lists filled: five slips received, two of them rejected, and
// one more checked on the confirmed list.
int saveExportScreen(AppContext& ctx, CounterSession& session, const QString& out) {
    session.list().clear();
    session.resetPayment();
    for (int i = 1; i <= 6; ++i)
        session.ler(waterSlip(1640 + i, 2350 * i + 99, 7000 + i));
    session.gravar();
    const qint32 mov = session.day().movimento().ID;
    const auto rows = clsRecebimentos::listarExportacao(ctx.db, mov, 4, 0);
    if (rows && rows->size() >= 6)
        tell(ctx.dialogs,
             ExportMarks::gravarIds(ctx, mov, {rows->at(1).IDRECEBE, rows->at(4).IDRECEBE}, 1)
                 .notice);
    frmExportar form(ctx, mov, session.day().movimento().MDATA);
    form.findChild<QLineEdit*>(QStringLiteral("txtcodbanco"))->setText(QStringLiteral("001"));
    form.findChild<QPushButton*>(QStringLiteral("cmdPesquisar"))->click();
    form.findChild<QPushButton*>(QStringLiteral("cmdRejeitados"))->click();
    auto* confirmados = form.findChild<QTreeWidget*>(QStringLiteral("lstRecebimentos"));
    if (confirmados->topLevelItemCount() > 2)
        confirmados->topLevelItem(2)->setCheckState(0, Qt::Checked);
    return save(form, out, QStringLiteral("frmExportar")) ? 0 : 1;
}

// A town hall's settings, with the folders in place, for the options screens.
void writeSettings(AppContext& ctx) {
    for (const char* f : {"Integracao", "Estornos", "Export", "Febraban", "Atualizacoes"})
        QDir(ctx.folder).mkpath(QLatin1String(f));
    const QString e = QStringLiteral("Export"), m = QStringLiteral("Mensagem"),
                  p = QStringLiteral("Print");
    const QString dir = QDir::toNativeSeparators(ctx.folder) + QDir::separator();
    IniFile::write(
        QList<IniFile::Entry>{
            {e, QStringLiteral("Path1"), dir + QStringLiteral("Integracao/")},
            {e, QStringLiteral("Path2"), dir + QStringLiteral("Estornos/")},
            {e, QStringLiteral("Path3"), dir + QStringLiteral("Export/")},
            {e, QStringLiteral("caminho_remove_item"),
             dir + QStringLiteral("Export/Remove_item.txt")},
            {e, QStringLiteral("caminho_soma"), dir + QStringLiteral("Export/Soma.txt")},
            {e, QStringLiteral("caminho_febraban"), dir + QStringLiteral("Febraban/")},
            {e, QStringLiteral("nome_banco"), QStringLiteral("BANCO DO BRASIL")},
            {e, QStringLiteral("cnpj"), QStringLiteral("46523015000135")},
            {e, QStringLiteral("rede"), QStringLiteral("1")},
            {e, QStringLiteral("cod_banco_cnab"), QStringLiteral("001")},
            {e, QStringLiteral("agencia"), QStringLiteral("1234")},
            {e, QStringLiteral("dv"), QStringLiteral("5")},
            {e, QStringLiteral("cedente_agua"), QStringLiteral("778899")},
            {e, QStringLiteral("cedente_iptu"), QStringLiteral("112233")},
            {e, QStringLiteral("guiche"), QStringLiteral("A")},
            {e, QStringLiteral("tecla_mais"), QStringLiteral("1")},
            {m, QStringLiteral("pref"), QStringLiteral("PREFEITURA MUNICIPAL DE SAO JOSE")},
            {m, QStringLiteral("mensagem"), QStringLiteral("OBRIGADO PELA PREFERENCIA")},
            {m, QStringLiteral("cabecalho"), QStringLiteral("PMX")},
            {QStringLiteral("Reserva"), QStringLiteral("soma"), QStringLiteral("1")},
            {p, QStringLiteral("porta"), QStringLiteral("LPT1")},
            {p, QStringLiteral("impressora"), QStringLiteral("bematech")},
            {p, QStringLiteral("print_cupom"), QStringLiteral("1")},
            {p, QStringLiteral("cabecalho"), QStringLiteral("1")},
            {p, QStringLiteral("impressora_padrao"), QStringLiteral("Termica-Caixa")},
            {QStringLiteral("Opcoes"), QStringLiteral("Atualiza"),
             dir + QStringLiteral("Atualizacoes/")}},
        ctx.iniPath());
    ctx.reloadSettings();
}

// The administration screens, filled as a town hall would have them.
int saveAdminScreens(AppContext& ctx, const QString& out) {
    int failures = 0;
    writeSettings(ctx);
    UserAccounts::gravar(ctx, {std::nullopt, QStringLiteral("MARIA DA SILVA"),
                               QStringLiteral("maria2026"), QStringLiteral("USER"), true});
    UserAccounts::gravar(ctx, {std::nullopt, QStringLiteral("JOAO PEREIRA"),
                               QStringLiteral("joao2026"), QStringLiteral("USER"), false});

    frmCodBarra kinds(ctx);
    failures += !save(kinds, out, QStringLiteral("frmCodBarra"));
    auto* list = kinds.findChild<QTreeWidget*>(QStringLiteral("ListView1"));
    list->setCurrentItem(list->topLevelItem(3));
    kinds.findChild<QPushButton*>(QStringLiteral("Command1_0"))->click();
    failures += !save(kinds, out, QStringLiteral("frmCodBarra-cadastro"));

    frmUsuarios users(ctx);
    failures += !save(users, out, QStringLiteral("frmUsuarios"));
    auto* ulist = users.findChild<QTreeWidget*>(QStringLiteral("ListView1"));
    ulist->setCurrentItem(ulist->topLevelItem(1));
    users.findChild<QPushButton*>(QStringLiteral("cmdEditar"))->click();
    failures += !save(users, out, QStringLiteral("frmUsuarios-cadastro"));

    FirstRunDialog firstRun(ctx);
    failures += !save(firstRun, out, QStringLiteral("FirstRunDialog"));

    frmOpcoes options(ctx);
    options.setInstalledPrinters(
        {QStringLiteral("Termica-Caixa"), QStringLiteral("Laser-Tesouraria")});
    auto* tabs = options.findChild<QTabWidget*>(QStringLiteral("SSTab1"));
    auto* inner = options.findChild<QTabWidget*>(QStringLiteral("SSTab2"));
    const QStringList pages = {QStringLiteral("Diretorios"), QStringLiteral("Parametros"),
                               QStringLiteral("Mensagem"), QStringLiteral("Contabil"),
                               QStringLiteral("Impressao")};
    for (int i = 0; i < pages.size(); ++i) {
        tabs->setCurrentIndex(i < 2 ? 0 : i - 1);
        inner->setCurrentIndex(i < 2 ? i : 0);
        failures += !save(options, out, QStringLiteral("frmOpcoes-") + pages[i]);
    }

    frmSkin skin(ctx);
    auto* skins = skin.findChild<QComboBox*>(QStringLiteral("cmbSkins"));
    skins->setCurrentIndex(2);
    skin.findChild<QLineEdit*>(QStringLiteral("Text1"))->setText(skins->currentData().toString());
    failures += !save(skin, out, QStringLiteral("frmSkin"));
    frmAtualiza update(ctx);
    failures += !save(update, out, QStringLiteral("frmAtualiza"));
    frmAutenticar stamp(ctx, QStringLiteral("ADMINISTRADOR"));
    stamp.findChild<QLineEdit*>(QStringLiteral("mskvalor"))->setText(QStringLiteral("150,00"));
    failures += !save(stamp, out, QStringLiteral("frmAutenticar"));
    return failures;
}

// The cash day while it is open: the opening float, a withdrawal of two items being recorded,
// the day's withdrawals, the safe and the provisional count.
int saveOpenDayScreens(AppContext& ctx, const clsMovimento& mov, const QString& out) {
    int failures = 0;
    CashEntry opening(ctx, mov.ID, EntryKind::CashIn);
    opening.incluirItens(QString());
    opening.gravarItem(100, QString(), Money::fromReais(200));
    CashEntry payment(ctx, mov.ID, EntryKind::PaymentOut);
    payment.incluirItens(QStringLiteral("EMPENHO 0412/2026 - MATERIAL DE LIMPEZA"));
    payment.gravarItem(102, QStringLiteral("NE 0412"), Money::fromCents(8540));

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

    CashSafe::aplicar(ctx, mov.ID, CashSafe::Direction::In, Money::fromReais(1500));
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
    count.adicionar(100, QString(), Money::fromCents(169497));
    count.adicionar(101, QStringLiteral("000123"), Money::fromReais(50));
    count.adicionar(101, QStringLiteral("004567"), Money::fromReais(120));
    frmLancamentos dlg(ctx, mov.MDATA);
    return !save(dlg, out, QStringLiteral("frmLancamentos"));
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
    ReversalUndoDialog undo(ctx, nullptr);
    failures += !save(undo, out, QStringLiteral("ReversalUndoDialog"));
    return failures;
}

// The reports' previews: the closed day's bulletin (count ten reais short, a correction and a
// reversal) and the period that holds it, with its charts.
int saveReportScreens(AppContext& ctx, const QDate& day, const QString& out) {
    int failures = 0;
    const std::pair<const char*, QDialog*> previews[] = {
        {"relatorio-boletim", ReportsMenu::boletim(ctx, day, nullptr)},
        {"relatorio-periodo", ReportsMenu::periodo(ctx, day.addDays(-3), day, nullptr)}};
    for (const auto& [name, dlg] : previews) {
        if (!dlg) {
            ++failures;
            continue;
        }
        dlg->show(); // the preview lays its pages out when first shown
        QApplication::processEvents();
        failures += !save(*dlg, out, QLatin1String(name));
        delete dlg;
    }
    return failures;
}

} // namespace

namespace {

// A fresh folder with the demo data on 23/11/2026, MARIA DA SILVA at the counter; every
// question is answered yes.
struct GalleryFolder {
    QTemporaryDir folder;
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(10, 15, 30))};
    AppContext ctx{folder.path(), dialogs, clock};

    bool prepare() {
        IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("1"),
                       ctx.iniPath());
        IniFile::write(QStringLiteral("Opcoes"), QStringLiteral("juros"), QStringLiteral("1"),
                       ctx.iniPath());
        if (!Startup::Abre_conexao(ctx, true) || !DemoData::seed(ctx, nullptr, nullptr))
            return false;
        ctx.reloadSettings();
        ctx.userName = QStringLiteral("MARIA DA SILVA");
        ctx.workingDate = clock.today();
        dialogs.defaultAnswer = DialogAnswer::Yes;
        return true;
    }
};

// The morning's customers, so the day's list, its count and its total show.
void recordMorning(CounterSession& session) {
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
}

// A customer as the cashier builds one: two guides on time, one overdue (consent given), a
// one-off item, and the amount tendered.
void buildCustomer(CounterSession& session, const QDate& today) {
    session.ler(QStringLiteral("81660000003124004262026113058888888888888888"));
    session.ler(QStringLiteral("00193165100000089151234500000000000000000000"));
    if (session.ler(QStringLiteral("81830000012345604272026011000000000000000000"))
            .precisaConsentimento)
        session.continuar(true);
    session.somaAvulso({7, Money::fromReais(15), today, QStringLiteral("1/1"), QString()});
    session.tender(Money::fromReais(2000));
}

// The counter as `session` stands, under `name`.
int saveCounter(CounterSession& session, bool consulta, const QString& out, const QString& name) {
    const auto counter = AppShell::counter(session, consulta);
    return save(*counter, out, name) ? 0 : 1;
}

// The counter of the day: empty, with a customer of four items, and once the customer paid;
// the day's documents the printer never confirmed (none was, with no printer here).
int saveCounterDay(GalleryFolder& g, CounterSession& session, const QString& out) {
    int failures = saveCounter(session, false, out, QStringLiteral("frmFrente-vazio"));
    recordMorning(session);
    buildCustomer(session, g.clock.today());
    failures += saveCounter(session, false, out, QStringLiteral("frmFrente-quatro-itens"));
    failures += saveOverdueScreens(g.ctx, out);
    failures += saveCorrectionScreens(g.ctx, session, out);
    failures += saveExportScreen(g.ctx, session, out);
    failures += saveAdminScreens(g.ctx, out);
    session.gravar(); // the customer pays: the day has receipts
    failures += saveCounter(session, false, out, QStringLiteral("frmFrente-dia-com-recebimentos"));
    PendingStampsDialog pendentes(session);
    failures += !save(pendentes, out, QStringLiteral("frmPendentes"));
    return failures;
}

// Every screen, in the skin in use, on a fresh folder of its own.
int gallery(const QString& out) {
    GalleryFolder g;
    if (!g.prepare()) {
        QTextStream(stderr) << "Não foi possível preparar os dados das telas.\n";
        return 1;
    }
    int failures = 0;
    frmData date(g.ctx);
    failures += !save(date, out, QStringLiteral("frmData"));

    CounterSession session(g.ctx, nullptr);
    session.day().abrir();
    failures += saveCounterDay(g, session, out);
    session.list().clear();
    session.resetPayment();
    failures += saveOpenDayScreens(g.ctx, session.day().movimento(), out);
    session.day().encerrar();
    failures += saveCountScreen(g.ctx, session.day().movimento(), out);
    failures += saveReportScreens(g.ctx, session.day().movimento().MDATA, out);
    failures += saveCounter(session, false, out, QStringLiteral("frmFrente-encerrado"));

    // A past day opened for consultation: the date stands out, what cannot act is disabled.
    g.ctx.workingDate = g.clock.today().addDays(-3);
    CounterSession past(g.ctx, nullptr);
    past.day().abrir();
    failures += saveCounter(past, true, out, QStringLiteral("frmFrente-consulta-dia-anterior"));
    return failures;
}

} // namespace

int runScreens(int argc, char** argv) {
    QApplication app(argc, argv);
    BrazilianLocale::apply();
    TitleRoom titles;
    app.installEventFilter(&titles);
    QTextStream err(stderr);
    const QStringList args = QApplication::arguments();
    const QString out = args.size() > 2 ? args[2] : QStringLiteral("screens");
    int failures = 0;
    // Each skin that ships in a folder of its own: screens/padrao, screens/escuro, ...
    for (const auto& [name, path] : Skin::shipped()) {
        const QString dir = QDir(out).filePath(QFileInfo(path).completeBaseName());
        QDir().mkpath(dir);
        app.setStyleSheet(Skin::read(path).value_or(QString()));
        failures += gallery(dir);
        err << QStringLiteral("%1: telas gravadas em %2\n").arg(name, QDir(dir).absolutePath());
    }
    return failures == 0 ? 0 : 1;
}
