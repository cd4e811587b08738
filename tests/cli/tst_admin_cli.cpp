// The administration commands as an installer uses them: settings shown and saved with the
// screen's checks, operators refused and deleted, the published version.
#include "CliFolder.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTest>

namespace {} // namespace

class tst_admin_cli : public QObject {
    Q_OBJECT
private slots:
    void settingsAndOperators() {
        CliFolder f;
        QVERIFY(QDir(f.path(QStringLiteral("Integracao"))).exists()); // the template's folders
        CliRun r = f.run(words("opcoes --json"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"Export").toObject().value(u"guiche"),
                 QJsonValue(QStringLiteral("1")));
        QVERIFY(r.json().contains(QStringLiteral("Skin")));
        r = f.run(words("opcoes"));
        QVERIFY(r.out.contains(QStringLiteral("Mensagem/cabecalho=PMX\n")));

        const QByteArray before = f.config();
        struct Refusal {
            const char* assignment;
            int code;
            const char* message;
        };
        const Refusal refusals[] = {
            {"Export/guiche=AB", 1, "O guichê de trabalho deve ter uma letra (ou um algarismo)."},
            {"Export/guiche=B", 1,
             "O guichê de trabalho não muda pelas opções: com o movimento fechado, o "
             "administrador usa tolvane guiche assumir LETRA."},
            {"Reserva/itens=Export/", 1,
             "Reserva/itens deve ser uma lista de códigos de espécies de dinheiro separados por "
             "ponto e vírgula (ou vazio, para todas)."},
            {"Mensagem/cabecalho=PMXY", 1, "O cabeçalho da autenticação deve ter 3 posições."},
            {"Export/Path1=/nao/existe", 1, "A pasta /nao/existe não existe."},
            {"Opcoes/juros=3", 1, "A opção de juros deve ser 1 ou 2."},
            {"Reserva/cofre=0,00", 2, "Reserva/cofre não é alterada pelas opções."},
            {"Export/inventada=1", 2, "Configuração desconhecida: Export/inventada."},
            {"guiche=B", 2, "Use SECAO/CHAVE=VALOR: guiche=B"}};
        for (const Refusal& x : refusals) {
            r = f.options(words("Export/guiche=1") + words(x.assignment));
            QVERIFY2(r.code == x.code, x.assignment);
            QCOMPARE(r.err.trimmed(), QString::fromUtf8(x.message));
        }
        r = f.run(words("opcoes gravar Export/guiche=B"), "senhaerrada\n");
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Senha Inválida!!"));
        r = f.run(words("opcoes gravar Export/guiche=B"), f.password() + "\nsenhaerrada\n");
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Senha de administrador não aceita."));
        QCOMPARE(f.config(), before);

        r = f.options(words("export/GUICHE=1 Export/Path3=Export "
                            "Skin/nome=:/skins/alto-contraste.qss --json"));
        QCOMPARE(r.code, 0);
        const QJsonObject saved = r.json().value(u"gravadas").toObject();
        QCOMPARE(saved.value(u"Export").toObject().value(u"guiche"),
                 QJsonValue(QStringLiteral("1")));
        QCOMPARE(saved.value(u"Export").toObject().value(u"Path3"),
                 QJsonValue(QStringLiteral("Export/")));
        const QByteArray after = f.config();
        QVERIFY(after.contains("guiche=1\r\n"));
        QVERIFY(after.contains("itens=\r\n")); // the receipts' folder is not a list of kinds
        QVERIFY(after.contains("; Modelo da autenticadora: bematech, quattro ou txt.\r\n"));
        QVERIFY(after.contains("[Banco]\r\n"));

        // The demo's administrator is the only one: deleted only on purpose.
        QCOMPARE(f.asAdmin(words("usuario gravar --tipo USER --nome CAIXA"), "caixa1\n").code, 0);
        r = f.asAdmin(words("usuario excluir --id 1"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("--ultimo-adm")));
        QCOMPARE(f.asAdmin(words("entrar --adm")).code, 0);
        QCOMPARE(f.asAdmin(words("usuario excluir --id 1 --ultimo-adm")).code, 0);
        QCOMPARE(f.asAdmin(words("entrar --adm")).code, 1);
        // Without an administrator, no administrator's act is possible any more.
        r = f.run(words("usuario excluir --id 2"), "caixa1\ncaixa1\n");
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Senha de administrador não aceita."));
    }

    void publishedVersion_data() {
        QTest::addColumn<QByteArray>("file"); // "-": none
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("situacao");
        QTest::newRow("absent") << QByteArray("-") << 0 << "sem_arquivo";
        QTest::newRow("empty") << QByteArray("") << 0 << "vazio";
        QTest::newRow("older") << QByteArray("0.0.1\r\n") << 0 << "atualizada";
        QTest::newRow("newer") << QByteArray("9.9.9\r\n") << 0 << "nova";
        QTest::newRow("binary") << QByteArray("\x7f"
                                              "ELF\0\0",
                                              6)
                                << 1 << "invalido";
        QTest::newRow("huge line") << QByteArray(10 * 1024 * 1024, 'x') << 1 << "invalido";
    }

    void publishedVersion() {
        QFETCH(QByteArray, file);
        QFETCH(int, code);
        QFETCH(QString, situacao);
        static CliFolder f;
        static const bool ready = [] {
            const QJsonValue before = f.run(words("atualizacao --json")).json().value(u"situacao");
            QDir().mkpath(f.path(QStringLiteral("versoes")));
            return before == QJsonValue(QStringLiteral("sem_pasta")) &&
                   f.options({QStringLiteral("Opcoes/Atualiza=versoes")}).code == 0;
        }();
        QVERIFY(ready);
        QFile v(f.path(QStringLiteral("versoes/VersaoAtual.txt")));
        v.remove();
        if (file != "-") {
            QVERIFY(v.open(QIODevice::WriteOnly));
            v.write(file);
            v.close();
        }
        const CliRun r = f.run(words("atualizacao --json"));
        QCOMPARE(r.code, code);
        QCOMPARE(r.json().value(u"situacao"), QJsonValue(situacao));
        QCOMPARE(r.json().value(u"nova").toBool(), situacao == QLatin1String("nova"));
    }
};

QTEST_MAIN(tst_admin_cli)
#include "tst_admin_cli.moc"
