// Several counters and one central: a code received at one counter is refused at the others,
// a counter keeps receiving while the central is away and catches up exactly once, a race is
// decided by the central and listed, reversals withdraw their code, earlier years are imported.
#include "BackgroundCentral.h"
#include "CentralAccess.h"
#include "CentralImport.h"
#include "CentralLink.h"
#include "CentralSeals.h"
#include "DemoData.h"
#include "DirectCentral.h"
#include "ErrorLog.h"
#include "NetworkOutbox.h"
#include "NetworkStatus.h"
#include "OpenCounter.h"
#include "PaymentRecorder.h"
#include "PgServer.h"
#include "ReceiptCorrections.h"
#include "Startup.h"
#include "TestCodes.h"
#include "clsConflitoRede.h"
#include "clsMovimento.h"
#include "clsPublicacaoRede.h"
#include "clsRecebimentos.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <arpa/inet.h>
#include <barrier>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

QString code(int n) {
    return TestCodes::guide(QStringLiteral("0425"), 1000 + n, QStringLiteral("20261130"),
                            QStringLiteral("%1").arg(n, 17, 10, QLatin1Char('0')));
}

// A port nothing listens on: the central "stopped".
int closedPort() {
    QTcpServer s;
    s.listen(QHostAddress::LocalHost, 0);
    return s.serverPort();
}

// A host that does not answer: its listening queue is full, so a connection is never accepted
// nor refused and the caller waits its whole time-out.
class Blackhole {
public:
    Blackhole() {
        m_fd = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof(a);
        ::bind(m_fd, reinterpret_cast<sockaddr*>(&a), len);
        ::listen(m_fd, 0);
        ::getsockname(m_fd, reinterpret_cast<sockaddr*>(&a), &len);
        port = ntohs(a.sin_port);
        for (int i = 0; i < 3; ++i) {
            const int c = ::socket(AF_INET, SOCK_STREAM, 0);
            ::fcntl(c, F_SETFL, O_NONBLOCK);
            ::connect(c, reinterpret_cast<sockaddr*>(&a), len);
            m_fillers << c;
        }
        QTest::qWait(100);
    }
    ~Blackhole() {
        for (int c : m_fillers)
            ::close(c);
        ::close(m_fd);
    }
    int port = 0;

private:
    int m_fd = -1;
    QList<int> m_fillers;
};

// The central database, read directly.
class Central {
public:
    Central() : db(PgServer::instance().freshDatabase()) {}
    ~Central() { QSqlDatabase::removeDatabase(m_name); }
    qint64 count(const QString& where = QStringLiteral("TRUE")) {
        QSqlQuery q(conn());
        if (!q.exec(QStringLiteral("SELECT COUNT(*) FROM RECEBIMENTOS1 WHERE ") + where) ||
            !q.next())
            return -1;
        return q.value(0).toLongLong();
    }
    bool exec(const QString& sql) {
        QSqlQuery q(conn());
        return q.exec(sql);
    }
    QString selo(const QString& guiche, const QDate& dia) {
        QSqlQuery q(conn());
        q.prepare(QStringLiteral("SELECT HASH FROM SelosRede WHERE GUICHE = ? AND DIA = ? ORDER BY "
                                 "RECEBIDO DESC LIMIT 1"));
        q.addBindValue(guiche);
        q.addBindValue(dia);
        return q.exec() && q.next() ? q.value(0).toString() : QString();
    }
    QString guicheOf(const QString& c) {
        QSqlQuery q(conn());
        q.prepare(QStringLiteral("SELECT GUICHE FROM RECEBIMENTOS1 WHERE CODBARRA = ?"));
        q.addBindValue(c);
        return q.exec() && q.next() ? q.value(0).toString() : QString();
    }
    DbConfig db;

private:
    QSqlDatabase conn() {
        // A fresh connection each time: the server may have gone away and come back.
        if (QSqlDatabase::contains(m_name))
            QSqlDatabase::removeDatabase(m_name);
        QSqlDatabase d = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), m_name);
        d.setHostName(db.host);
        d.setPort(db.port);
        d.setDatabaseName(db.name);
        d.setUserName(db.user);
        d.open();
        return d;
    }
    QString m_name = QStringLiteral("central-check-") + db.name;
};

// The open counter (its own database) at `guiche`, the central in [Rede], the network check on.
struct NetCounter : OpenCounter {
    NetCounter(const QString& guiche, const DbConfig& central, int port = 0,
               TestApp::Backend backend = TestApp::Backend::SQLite)
        : OpenCounter(backend) {
        app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), guiche);
        app.setOption(QStringLiteral("Rede"), QStringLiteral("host"), central.host);
        app.setOption(QStringLiteral("Rede"), QStringLiteral("porta"),
                      QString::number(port ? port : central.port));
        app.setOption(QStringLiteral("Rede"), QStringLiteral("nome"), central.name);
        app.setOption(QStringLiteral("Rede"), QStringLiteral("usuario"), central.user);
        Startup::Abre_conexao(app.ctx(), false); // the database is now this counter's
        app.ctx().settings.rede = 1;
        open();
    }
    // The central moved (or came back): the next use reads [Rede] again.
    void pointAt(int port) {
        app.setOption(QStringLiteral("Rede"), QStringLiteral("porta"), QString::number(port));
        app.ctx().settings.rede = 1;
        app.ctx().rede.reset();
    }
    // A read as it comes, an overdue guide's question left unanswered.
    CounterSession::ReadResult scan(const QString& c) { return session.ler(c); }
    qint64 pendentes() { return clsPublicacaoRede::resumo(app.db())->pendentes; }
    // One guide recorded as the payment of one customer, without reading it first (as a second
    // counter does that read it in the same instant).
    std::optional<QList<RecordedReceipt>> record(const QStringList& codes) {
        CustomerList list;
        for (const QString& c : codes) {
            CustomerItem item;
            item.tipo = 1;
            item.codbarra = c;
            item.valor = Money::fromCents(1005);
            list.append(item);
        }
        return PaymentRecorder::record(app.ctx(), session.day().movimento(), list);
    }
    // Runs `work` on a thread of its own with this counter's connections made there (a database
    // connection belongs to the thread that opened it), and gives them back afterwards.
    template <typename F> QThread* onThread(F work) {
        app.ctx().rede.reset();
        const DbConfig cfg = app.db().config();
        app.db().close();
        return QThread::create([this, cfg, work] {
            app.db().open(cfg);
            work();
            app.ctx().rede.reset();
            app.db().close();
        });
    }
    void back() { app.db().open(app.db().config()); }
    QList<clsConflitoRede> conflitos() { return *clsConflitoRede::listar(app.db()); }
    int shown(const QString& start) {
        int n = 0;
        for (const QString& t : app.dialogs().texts())
            n += t.startsWith(start) ? 1 : 0;
        return n;
    }
};

const QString kNaoResponde = QStringLiteral("A central da rede");
const QString kConflito = QStringLiteral("Conflito na rede");

} // namespace

class tst_rede : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        QVERIFY2(PgServer::instance().ok(), qPrintable(PgServer::instance().error()));
    }

    void aCodeReceivedAtOneCounterIsRefusedAtTheOthers() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db), b(QStringLiteral("B"), central.db);
        QVERIFY(a.receive({code(1), code(2)}));
        QCOMPARE(central.count(), 2);
        QCOMPARE(central.guicheOf(code(1)), QStringLiteral("A"));
        QCOMPARE(a.pendentes(), 0);

        const auto refused = b.scan(code(2));
        QCOMPARE(refused.resultado, ReadingDecision::Outcome::Recebida);
        QVERIFY(refused.networkChecked && !refused.showNetworkLabel);
        QCOMPARE(b.app.dialogs().last().form, QStringLiteral("frmContaLancada"));
        QCOMPARE(b.app.dialogs().last().text, QStringLiteral("Conta já Recebida!!!"));
        QVERIFY(b.session.list().isEmpty());
        // And the other way round; codes without a document of their own never reach it.
        const QString noDocument = QStringLiteral("000") + QString(41, QLatin1Char('7'));
        QVERIFY(b.receive({code(3)}));
        QCOMPARE(a.scan(code(3)).resultado, ReadingDecision::Outcome::Recebida);
        CustomerItem item;
        item.tipo = 1;
        item.codbarra = noDocument;
        item.valor = Money::fromCents(500);
        CustomerList list;
        list.append(item);
        QVERIFY(PaymentRecorder::record(b.app.ctx(), b.session.day().movimento(), list));
        QCOMPARE(central.count(QStringLiteral("CODBARRA LIKE '000%'")), 0);
        QCOMPARE(b.pendentes(), 0);
        // With the check switched off the central is not asked.
        b.app.ctx().settings.rede = 11;
        QCOMPARE(b.scan(code(1)).resultado, ReadingDecision::Outcome::Aceito);
    }

    void reversalsWithdrawTheirCodeAndUndoingPublishesItAgain() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db), b(QStringLiteral("B"), central.db);
        const auto rows = a.receive({code(1), code(2)});
        QVERIFY(rows);
        ReceiptCorrections corr(a.app.ctx(), nullptr);
        QVERIFY(corr.estornar(rows->at(0).idrecebe, QStringLiteral("pago em duplicidade")).feito);
        QCOMPARE(central.count(), 1);
        QCOMPARE(b.scan(code(1)).resultado, ReadingDecision::Outcome::Aceito);
        b.session.limparSoma();
        QVERIFY(corr.reverter(rows->at(0).idrecebe).feito);
        QCOMPARE(central.guicheOf(code(1)), QStringLiteral("A"));
        QCOMPARE(b.scan(code(1)).resultado, ReadingDecision::Outcome::Recebida);
        // A changed code: the old one leaves, the new one arrives.
        ReceiptCorrections::Valores novo{qint16(rows->at(1).item.tipo), rows->at(1).autentica,
                                         code(9), rows->at(1).item.valor};
        QVERIFY(
            corr.alterar(rows->at(1).idrecebe, novo, QStringLiteral("código lido errado")).feito);
        QCOMPARE(central.guicheOf(code(2)), QString());
        QCOMPARE(central.guicheOf(code(9)), QStringLiteral("A"));
        QCOMPARE(central.count(), 2);
        QCOMPARE(a.pendentes(), 0);
    }

    void theCounterKeepsReceivingWhileTheCentralIsAwayAndCatchesUpOnce() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db, closedPort());
        const auto first = a.scan(code(1));
        QCOMPARE(first.resultado, ReadingDecision::Outcome::Aceito);
        QVERIFY(first.networkChecked && first.showNetworkLabel); // lblStatusRede shown
        QVERIFY(a.session.gravar());
        QVERIFY(a.receive({code(2)}));
        QCOMPARE(a.app.count(QStringLiteral("Recebimentos")), 2);
        QCOMPARE(a.pendentes(), 2);
        QCOMPARE(a.shown(kNaoResponde), 1); // told once, logged once
        QCOMPARE(a.app.log().count(QStringLiteral("não responde")), 1);
        // A late outbox shows the label even while the central answers.
        NetworkStatus::Situacao s = NetworkStatus::consultar(a.app.ctx());
        QVERIFY(!s.ativa && NetworkStatus::mostrarRotulo(s, a.app.clock().now()));
        s.ativa = true;
        QVERIFY(!NetworkStatus::mostrarRotulo(s, s.maisAntigo.addSecs(60)));
        QVERIFY(NetworkStatus::mostrarRotulo(s, s.maisAntigo.addSecs(61)));

        // Back: everything arrives, once, whatever is tried again.
        a.pointAt(central.db.port);
        a.app.ctx().db.faultHook = [](const QString& sql) {
            return sql.startsWith(QLatin1String("UPDATE PublicacaoRede"));
        };
        NetworkOutbox::enviar(a.app.ctx());
        QCOMPARE(central.count(), 2); // the central has them; the marks failed
        QCOMPARE(a.pendentes(), 2);
        a.app.ctx().db.faultHook = nullptr;
        NetworkOutbox::enviar(a.app.ctx());
        NetworkOutbox::enviar(a.app.ctx());
        QCOMPARE(central.count(), 2);
        QCOMPARE(a.pendentes(), 0);
        QVERIFY(a.conflitos().isEmpty());
        QVERIFY(NetworkStatus::consultar(a.app.ctx()).ultimoEnvio.isValid());
    }

    void theCentralStoppedAndStartedAgainLosesAndDoublesNothing() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db), b(QStringLiteral("B"), central.db);
        QVERIFY(a.receive({code(1)}));
        QVERIFY(PgServer::instance().pause());
        QVERIFY(a.receive({code(2), code(3)})); // a live connection that died
        QVERIFY(b.scan(code(2)).showNetworkLabel);
        QCOMPARE(a.pendentes(), 2);
        QVERIFY(PgServer::instance().resume());
        a.app.ctx().rede.reset(); // a new run of the program, or the retry after the pause
        b.app.ctx().rede.reset();
        NetworkOutbox::enviar(a.app.ctx());
        QCOMPARE(central.count(), 3);
        QCOMPARE(a.pendentes(), 0);
        QCOMPARE(b.scan(code(3)).resultado, ReadingDecision::Outcome::Recebida);
    }

    void twoCountersPresentingOneGuideAtOnceChargeItOnce_data() {
        QTest::addColumn<int>("backend");
        QTest::newRow("sqlite") << int(TestApp::Backend::SQLite);
        QTest::newRow("postgres") << int(TestApp::Backend::PostgreSQL);
    }
    void twoCountersPresentingOneGuideAtOnceChargeItOnce() {
        QFETCH(int, backend);
        Central central;
        NetCounter a(QStringLiteral("A"), central.db, 0, TestApp::Backend(backend));
        NetCounter b(QStringLiteral("B"), central.db, 0, TestApp::Backend(backend));
        const int before = a.app.count(QStringLiteral("Recebimentos")) +
                           b.app.count(QStringLiteral("Recebimentos"));
        constexpr int kTries = 50;
        std::barrier together(2);
        QList<bool> paidA(kTries), paidB(kTries);
        auto loop = [&](NetCounter& k, QList<bool>& paid) {
            for (int i = 0; i < kTries; ++i) {
                together.arrive_and_wait(); // both press Enter in the same instant
                paid[i] = k.record({code(100 + i)}).has_value();
            }
        };
        const std::unique_ptr<QThread> ta(a.onThread([&] { loop(a, paidA); }));
        const std::unique_ptr<QThread> tb(b.onThread([&] { loop(b, paidB); }));
        ta->start();
        tb->start();
        QVERIFY(ta->wait(120000) && tb->wait(120000));
        a.back();
        b.back();
        int twice = 0, none = 0, atA = 0;
        for (int i = 0; i < kTries; ++i) {
            twice += paidA[i] && paidB[i] ? 1 : 0;
            none += !paidA[i] && !paidB[i] ? 1 : 0;
            atA += paidA[i] ? 1 : 0;
        }
        qInfo("%d tries: %d charged at A, %d at B, %d twice", kTries, atA, kTries - atA, twice);
        QCOMPARE(twice, 0);
        QCOMPARE(none, 0);
        QCOMPARE(a.app.count(QStringLiteral("Recebimentos")) +
                     b.app.count(QStringLiteral("Recebimentos")) - before,
                 kTries);
        QCOMPARE(central.count(QStringLiteral("RESERVA IS NULL AND IDRECEBE IS NOT NULL")), kTries);
        QVERIFY(a.conflitos().isEmpty() && b.conflitos().isEmpty());
        QCOMPARE(a.shown(QStringLiteral("Conta já Recebida!!!")) +
                     b.shown(QStringLiteral("Conta já Recebida!!!")),
                 kTries);
    }

    void aClaimWhosePaymentIsNotRecordedIsLetGo() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db), b(QStringLiteral("B"), central.db);
        qint64 heldWhileRecording = -1;
        a.app.ctx().db.faultHook = [&](const QString& sql) {
            if (!sql.startsWith(QLatin1String("INSERT INTO Recebimentos")))
                return false;
            heldWhileRecording = central.count(QStringLiteral("RESERVA IS NOT NULL"));
            return true;
        };
        QVERIFY(!a.record({code(1), code(2)}));
        QCOMPARE(heldWhileRecording, 2); // claimed before the local write
        QVERIFY(a.app.dialogs().last().text.startsWith(
            QStringLiteral("Erro ao gravar o pagamento!! Nenhum item foi gravado")));
        QCOMPARE(central.count(), 0); // both claims let go
        a.app.ctx().db.faultHook = nullptr;
        QVERIFY(b.record({code(1)})); // paid again elsewhere
        QVERIFY(a.record({code(2)})); // and here
        QCOMPARE(central.count(QStringLiteral("RESERVA IS NULL")), 2);

        // One guide of the payment held by another counter: the whole payment is refused.
        QVERIFY(!a.record({code(3), code(1)}));
        QCOMPARE(a.app.dialogs().last().text,
                 QStringLiteral("Conta já Recebida!!! O item 02 (%1) já foi recebido no guichê B. "
                                "Nada foi gravado: retire o item da soma e grave de novo.")
                     .arg(code(1)));
        QCOMPARE(central.guicheOf(code(3)), QString());
        QCOMPARE(a.app.count(QStringLiteral("Recebimentos"),
                             QStringLiteral("CODBARRA = '%1'").arg(code(3))),
                 0);

        // A claim left by a counter that stopped before recording holds the guide for the others
        // until it expires; its own counter may take it again at once.
        const ReservaRede left = NetworkOutbox::reservar(a.app.ctx(), {code(4), code(6)});
        QCOMPARE(left.estado, ReservaRede::Estado::Reservada);
        QCOMPARE(b.scan(code(4)).resultado, ReadingDecision::Outcome::Recebida);
        QVERIFY(!b.record({code(4)}));
        QVERIFY2(a.record({code(6)}), qPrintable(a.app.dialogs().texts().join('|')));
        QCOMPARE(central.guicheOf(code(6)), QStringLiteral("A"));
        QVERIFY(central.exec(QStringLiteral("UPDATE RECEBIMENTOS1 SET RESERVA_ATE = now() - "
                                            "interval '1 second' WHERE RESERVA IS NOT NULL")));
        QCOMPARE(b.scan(code(4)).resultado, ReadingDecision::Outcome::Aceito);
        QVERIFY(b.session.gravar());
        QCOMPARE(central.guicheOf(code(4)), QStringLiteral("B"));
        QCOMPARE(central.count(QStringLiteral("RESERVA IS NOT NULL")), 0);
        QVERIFY(a.conflitos().isEmpty() && b.conflitos().isEmpty());
    }

    void theCentralKeepsEachClosedDaysSealAndTheAuditComparesWithIt() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db, closedPort());
        QVERIFY(a.receive({code(1)}));
        QVERIFY(a.session.day().encerrar()); // closed while the central is away
        const clsMovimento day = a.session.day().movimento();
        QCOMPARE(day.HASH_CADEIA.size(), 64);
        QCOMPARE(a.pendentes(), 2); // the code and the seal wait together
        a.pointAt(central.db.port);
        NetworkOutbox::enviar(a.app.ctx());
        QCOMPARE(a.pendentes(), 0);
        QCOMPARE(central.selo(QStringLiteral("A"), QDate(2026, 11, 23)), day.HASH_CADEIA);

        auto conferir = [&] {
            auto* rede = dynamic_cast<DirectCentral*>(CentralAccess::of(a.app.ctx()));
            rede->semPausa();
            return CentralSeals::conferir(a.app.ctx(), *rede);
        };
        CentralSeals::Conferencia c = conferir();
        QVERIFY(c.consultada);
        QCOMPARE(c.conferidos, 1);
        QVERIFY(c.diferencas.isEmpty());
        // The closed day rewritten afterwards, with a chain made anew: the central's seal says so.
        QVERIFY(a.app.db().SQLExecute(
            QStringLiteral("UPDATE Movimento SET HASH_CADEIA = ? WHERE ID = ?"),
            {QString(64, QLatin1Char('0')), day.ID}));
        // And a day the central sealed that this database no longer has.
        QVERIFY(central.exec(QStringLiteral("INSERT INTO SelosRede (GUICHE, DIA, HASH, ORIGEM) "
                                            "VALUES ('A', '2026-11-20', 'ab', 'x')")));
        c = conferir();
        QCOMPARE(c.conferidos, 0);
        QCOMPARE(c.diferencas.size(), 2);
        QVERIFY(c.diferencas[0].startsWith(QStringLiteral("23/11/2026")));
        QVERIFY(c.diferencas[1].startsWith(QStringLiteral("20/11/2026")));
        // A day closed again after a reopening is sealed anew; the latest seal is the day's.
        QVERIFY(a.session.day().reabrir());
        QVERIFY(a.session.day().encerrar());
        QCOMPARE(central.selo(QStringLiteral("A"), QDate(2026, 11, 23)),
                 a.session.day().movimento().HASH_CADEIA);
        QVERIFY(central.exec(QStringLiteral("DELETE FROM SelosRede WHERE DIA = '2026-11-20'")));
        c = conferir();
        QCOMPARE(c.conferidos, 1);
        QVERIFY(c.diferencas.isEmpty());
        // The central away: nothing is compared, and nothing is said to differ.
        a.pointAt(closedPort());
        c = conferir();
        QVERIFY(!c.consultada && c.diferencas.isEmpty());
    }

    void aRaceWhileTheCentralIsAwayEndsInOneConflictListed() {
        Central central;
        const int away = closedPort();
        NetCounter a(QStringLiteral("A"), central.db, away),
            b(QStringLiteral("B"), central.db, away);
        // Both record the guide alone; A reaches the central first.
        QVERIFY(a.receive({code(5)}));
        QVERIFY(b.receive({code(5)})); // the money was taken at both
        a.pointAt(central.db.port);
        NetworkOutbox::enviar(a.app.ctx());
        b.pointAt(central.db.port);
        NetworkOutbox::enviar(b.app.ctx());
        QCOMPARE(central.count(), 1);
        QCOMPARE(central.guicheOf(code(5)), QStringLiteral("A"));
        QVERIFY(a.conflitos().isEmpty());
        const QList<clsConflitoRede> listed = b.conflitos();
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed[0].CODBARRA, code(5));
        QCOMPARE(listed[0].GUICHE_CENTRAL, QStringLiteral("A"));
        QCOMPARE(listed[0].VALOR.format(), QStringLiteral("10,05"));
        QVERIFY(!listed[0].estornado);
        QCOMPARE(b.shown(kConflito), 1);
        QCOMPARE(b.app.log().count(kConflito), 1);
        QCOMPARE(b.pendentes(), 0);
        NetworkOutbox::enviar(b.app.ctx());
        QCOMPARE(b.conflitos().size(), 1); // listed once
        // B refunds: its reversal withdraws nothing of A's.
        ReceiptCorrections corr(b.app.ctx(), nullptr);
        QVERIFY(corr.estornar(listed[0].IDRECEBE, QStringLiteral("recebida no guichê A")).feito);
        QCOMPARE(central.guicheOf(code(5)), QStringLiteral("A"));
        QVERIFY(b.conflitos()[0].estornado);
    }

    void aRefusedConnectionIsToldOnceAndTheCounterGoesOn_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("said");
        for (const auto& [key, value, said] :
             {std::tuple{"nome", "nao_existe", "recusou a conexão"},
              {"usuario", "ninguem", "recusou a conexão"},
              {"host", "host-que-nao-existe.invalid", "não responde"}})
            QTest::newRow(key) << QString::fromUtf8(key) << QString::fromUtf8(value)
                               << QString::fromUtf8(said);
    }
    void aRefusedConnectionIsToldOnceAndTheCounterGoesOn() {
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QString, said);
        Central central;
        NetCounter a(QStringLiteral("A"), central.db);
        a.app.setOption(QStringLiteral("Rede"), key, value);
        a.app.ctx().settings.rede = 1;
        QVERIFY(a.receive({code(1)}));
        QVERIFY(a.scan(code(2)).showNetworkLabel);
        QCOMPARE(a.shown(kNaoResponde), 1);
        QVERIFY(a.app.dialogs().texts().join(QLatin1Char('|')).contains(said));
        QCOMPARE(a.app.log().count(QStringLiteral("Local: Rede: central de recebimentos")), 1);
        QCOMPARE(a.pendentes(), 1);
    }

    void aCentralThatDoesNotAnswerIsNotWaitedForByEveryCommand() {
        Central central;
        Blackhole silent;
        NetCounter a(QStringLiteral("A"), central.db, silent.port);
        a.app.setOption(QStringLiteral("Rede"), QStringLiteral("tempo_limite"),
                        QStringLiteral("200"));
        a.app.ctx().settings.rede = 1;
        QVERIFY(a.scan(code(1)).showNetworkLabel);
        QCOMPARE(a.shown(kNaoResponde), 1);
        QVERIFY(a.app.dialogs().last().text.contains(QStringLiteral("sem resposta em 200 ms")));
        const auto pausa = clsPublicacaoRede::pausa(a.app.db());
        QVERIFY(pausa && pausa->ate > QDateTime::currentDateTimeUtc());
        // The next command does not try: it goes straight on without the central.
        a.app.ctx().rede.reset();
        QVERIFY(a.scan(code(2)).showNetworkLabel);
        auto* next = dynamic_cast<DirectCentral*>(a.app.ctx().rede.get());
        QVERIFY(next && next->link().problema().isEmpty());
        QCOMPARE(a.shown(kNaoResponde), 1);
        // Recording then, the operator is told once that this counter works alone.
        QVERIFY(a.session.gravar());
        QVERIFY(a.receive({code(3)}));
        QCOMPARE(a.shown(QStringLiteral("A central da rede não respondeu: este guichê está "
                                        "recebendo sozinho.")),
                 1);
        QCOMPARE(a.pendentes(), 3);
        // Asked by name, it tries; once the central answers, the pause is lifted.
        a.pointAt(central.db.port);
        auto* named = dynamic_cast<DirectCentral*>(CentralAccess::of(a.app.ctx()));
        named->semPausa();
        QVERIFY(named->ativa());
        QVERIFY(!clsPublicacaoRede::pausa(a.app.db())->ate.isValid());
    }

    void aCentralThatCannotWriteKeepsTheCodesForLater() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db);
        QVERIFY(a.scan(code(1)).networkChecked); // connected
        auto* link = &dynamic_cast<DirectCentral*>(a.app.ctx().rede.get())->link();
        link->db().faultHook = [](const QString& sql) {
            return sql.contains(QLatin1String("INSERT INTO RECEBIMENTOS1"));
        };
        QVERIFY(a.session.gravar());
        QCOMPARE(a.pendentes(), 1);
        QCOMPARE(a.shown(QStringLiteral("A central da rede")), 1);
        QVERIFY(
            a.app.dialogs().texts().join(QLatin1Char('|')).contains(QStringLiteral("não gravou")));
        link->db().faultHook = nullptr;
        NetworkOutbox::enviar(a.app.ctx());
        QCOMPARE(a.pendentes(), 0);
        QCOMPARE(central.count(), 1);
    }

    void theScreensLinkAnswersWithoutWaitingOnTheNetwork() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db, closedPort());
        auto down = std::make_shared<BackgroundCentral>(a.app.ctx());
        a.app.ctx().rede = down;
        QVERIFY(down->aguardarPrimeiraVerificacao(10000));
        QVERIFY(down->configurada() && !down->ativa());
        QVERIFY(!down->recebida(code(1)));
        QVERIFY(a.receive({code(1)}));
        QCOMPARE(a.pendentes(), 1);
        const QStringList told = down->novidades();
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].contains(QStringLiteral("não responde")));
        QVERIFY(down->novidades().isEmpty()); // once
        a.app.ctx().rede.reset();
        down.reset();

        a.pointAt(central.db.port);
        auto up = std::make_shared<BackgroundCentral>(a.app.ctx());
        a.app.ctx().rede = up;
        QVERIFY(up->aguardarPrimeiraVerificacao(10000));
        QVERIFY(up->ativa());
        // The outbox goes at start-up; new receipts go at once.
        QTRY_COMPARE_WITH_TIMEOUT(central.count(), 1, 10000);
        QVERIFY(a.receive({code(2)}));
        QTRY_COMPARE_WITH_TIMEOUT(central.count(), 2, 10000);
        // Through the screen's link too, a claim is made first and let go when the payment fails.
        qint64 heldWhileRecording = -1;
        a.app.ctx().db.faultHook = [&](const QString& sql) {
            if (!sql.startsWith(QLatin1String("INSERT INTO Recebimentos")))
                return false;
            heldWhileRecording = central.count(QStringLiteral("RESERVA IS NOT NULL"));
            return true;
        };
        QVERIFY(!a.receive({code(7)}));
        a.app.ctx().db.faultHook = nullptr;
        a.session.limparSoma();
        QCOMPARE(heldWhileRecording, 1);
        QTRY_COMPARE_WITH_TIMEOUT(central.count(QStringLiteral("RESERVA IS NOT NULL")), 0, 10000);
        QCOMPARE(up->recebida(code(2)).value_or(false), true);
        QCOMPARE(up->recebida(code(3)).value_or(true), false);
        QCOMPARE(a.scan(code(2)).resultado, ReadingDecision::Outcome::Recebida);
        QTRY_COMPARE_WITH_TIMEOUT(a.pendentes(), 0, 10000);
    }

    void importLoadsEarlierCodesSkipsBadLinesAndResumes() {
        Central central;
        NetCounter a(QStringLiteral("A"), central.db);
        QVERIFY(a.receive({code(1)}));
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("codigos.csv"));
        QStringList lines = {QStringLiteral("CODBARRA;VALOR"), code(1) + QStringLiteral(";10,00")};
        for (int i = 100; i < 120; ++i)
            lines << code(i);
        lines << code(100) << QStringLiteral("1234") << QString()
              << QStringLiteral("\"") + code(120) + QStringLiteral("\"")
              << QStringLiteral("000") + QString(41, QLatin1Char('1'))
              << code(121).left(43) + QStringLiteral("x");
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(lines.join(QStringLiteral("\r\n")).toLatin1());
        f.close();

        ErrorLog& log = a.app.ctx().errors;
        CentralLink link(log, a.app.clock());
        QVERIFY(link.conectar(CentralConfig::fromIni(a.app.ctx().iniPath()), 0));
        // Cut short after two batches, as by kill -9: what was committed stays counted.
        int batches = 0;
        link.db().faultHook = [&](const QString& sql) {
            return sql.contains(QLatin1String("unnest")) && ++batches > 2;
        };
        const auto cut = CentralImport::importar(link, log, path, {}, 4);
        QVERIFY(!cut.ok);
        QCOMPARE(central.count(QStringLiteral("ORIGEM LIKE 'importacao:%'")), 7); // 8 sent, 1 known
        link.db().faultHook = nullptr;
        qint64 lastDone = 0, lastTotal = 0;
        const auto r = CentralImport::importar(
            link, log, path,
            [&](qint64 d, qint64 t) {
                lastDone = d;
                lastTotal = t;
            },
            4);
        QVERIFY2(r.ok, qPrintable(r.erro));
        QVERIFY(r.retomada);
        QCOMPARE(r.lidos, 27);       // every line with something on it
        QCOMPARE(r.importados, 21);  // 100..120
        QCOMPARE(r.jaExistentes, 2); // code(1) from the counter, code(100) twice in the file
        QCOMPARE(r.invalidos, 3);    // the header, 1234, 43 digits and a letter
        QCOMPARE(r.ignorados, 1);
        QVERIFY(r.exemplosInvalidos.contains(QStringLiteral("1234"))); // those of this run
        QCOMPARE(lastDone, lastTotal);
        QCOMPARE(central.count(), 22);
        // Run again once finished: a new pass, nothing written twice.
        const auto again = CentralImport::importar(link, log, path, {}, 4);
        QVERIFY(again.ok && !again.retomada);
        QCOMPARE(again.importados, 0);
        QCOMPARE(again.jaExistentes, 23);
        QCOMPARE(central.count(), 22);
        QCOMPARE(a.scan(code(110)).resultado, ReadingDecision::Outcome::Recebida);

        // An earlier caixa.db of this program: its receipts' codes.
        TestApp earlier;
        DemoData::seed(earlier.ctx(), nullptr, nullptr);
        for (int i = 200; i < 205; ++i)
            QVERIFY(earlier.db().SQLExecute(
                QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, IDMOVIMENTO, TIPO, VALOR, "
                               "CODBARRA) VALUES (?, 1, 1, 0, ?)"),
                {i, code(i)}));
        QVERIFY(earlier.db().SQLExecute(
            QStringLiteral("INSERT INTO Recebimentos (AUTENTICA, IDMOVIMENTO, TIPO, VALOR, "
                           "CODBARRA) VALUES (9, 1, 1, 0, ?)"),
            {clsRecebimentos::kSemCodigo}));
        const auto db =
            CentralImport::importar(link, log, earlier.path(QStringLiteral("caixa.db")), {}, 2);
        QVERIFY2(db.ok, qPrintable(db.erro));
        QCOMPARE(db.lidos, 6);
        QCOMPARE(db.importados, 5);
        QCOMPARE(db.ignorados, 1);
        QCOMPARE(central.count(), 27);
    }
};

QTEST_GUILESS_MAIN(tst_rede)
#include "tst_rede.moc"
