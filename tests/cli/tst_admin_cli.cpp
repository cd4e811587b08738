// The administration commands as an installer uses them: settings shown and saved with the
// screen's checks, the published version, operators refused and deleted.
#include "CliFolder.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QTest>

namespace {
class Folder : public CliFolder {
public:
    QByteArray config() const {
        QFile f(path(QStringLiteral("Config.ini")));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }
};
} // namespace

class tst_admin_cli : public QObject {
    Q_OBJECT
private slots:
    void settingsShownAndSaved() {
        Folder f;
        QVERIFY(QDir(f.path(QStringLiteral("Integracao"))).exists()); // the template's folders
        CliRun r = f.run({QStringLiteral("opcoes"), QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        QCOMPARE(
            r.json().value(QStringLiteral("Export")).toObject().value(QStringLiteral("guiche")),
            QJsonValue(QStringLiteral("1")));
        QVERIFY(r.json().contains(QStringLiteral("Skin")));
        r = f.run({QStringLiteral("opcoes")});
        QVERIFY(r.out.contains(QStringLiteral("Mensagem/cabecalho=PMX\n")));

        const QByteArray before = f.config();
        struct Refusal {
            QString assignment;
            int code;
            QString message;
        };
        const Refusal refusals[] = {
            {QStringLiteral("Export/guiche=AB"), 1,
             QStringLiteral("O guichê de trabalho deve ter uma letra (ou um algarismo).")},
            {QStringLiteral("Mensagem/cabecalho=PMXY"), 1,
             QStringLiteral("O cabeçalho da autenticação deve ter 3 posições.")},
            {QStringLiteral("Export/Path1=/nao/existe"), 1,
             QStringLiteral("A pasta /nao/existe não existe.")},
            {QStringLiteral("Opcoes/juros=3"), 1,
             QStringLiteral("A opção de juros deve ser 1 ou 2.")},
            {QStringLiteral("Reserva/cofre=0,00"), 2,
             QStringLiteral("Reserva/cofre não é alterada pelas opções.")},
            {QStringLiteral("Export/inventada=1"), 2,
             QStringLiteral("Configuração desconhecida: Export/inventada.")},
            {QStringLiteral("guiche=B"), 2, QStringLiteral("Use SECAO/CHAVE=VALOR: guiche=B")}};
        for (const Refusal& x : refusals) {
            r = f.options({QStringLiteral("Export/guiche=B"), x.assignment});
            QVERIFY2(r.code == x.code, qPrintable(x.assignment));
            QCOMPARE(r.err.trimmed(), x.message);
        }
        r = f.run(
            {QStringLiteral("opcoes"), QStringLiteral("gravar"), QStringLiteral("Export/guiche=B")},
            "senhaerrada\n");
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Senha de administrador não aceita."));
        QCOMPARE(f.config(), before);

        r = f.options({QStringLiteral("export/GUICHE=b"), QStringLiteral("Export/Path3=Export"),
                       QStringLiteral("Skin/nome=:/skins/alto-contraste.qss"),
                       QStringLiteral("--json")});
        QCOMPARE(r.code, 0);
        const QJsonObject saved = r.json().value(QStringLiteral("gravadas")).toObject();
        QCOMPARE(saved.value(QStringLiteral("Export")).toObject().value(QStringLiteral("guiche")),
                 QJsonValue(QStringLiteral("B")));
        QCOMPARE(saved.value(QStringLiteral("Export")).toObject().value(QStringLiteral("Path3")),
                 QJsonValue(QStringLiteral("Export/")));
        const QByteArray after = f.config();
        QVERIFY(after.contains("guiche=B\r\n"));
        QVERIFY(after.contains("itens=Export/\r\n"));
        QVERIFY(after.contains("; Modelo da autenticadora: bematech, quattro ou txt.\r\n"));
        QVERIFY(after.contains("[Banco]\r\n"));
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
        Folder f;
        QCOMPARE(f.run({QStringLiteral("atualizacao"), QStringLiteral("--json")})
                     .json()
                     .value(QStringLiteral("situacao")),
                 QJsonValue(QStringLiteral("sem_pasta")));
        QDir().mkpath(f.path(QStringLiteral("versoes")));
        if (file != "-") {
            QFile v(f.path(QStringLiteral("versoes/VersaoAtual.txt")));
            QVERIFY(v.open(QIODevice::WriteOnly));
            v.write(file);
        }
        QCOMPARE(f.options({QStringLiteral("Opcoes/Atualiza=versoes")}).code, 0);
        const CliRun r = f.run({QStringLiteral("atualizacao"), QStringLiteral("--json")});
        QCOMPARE(r.code, code);
        QCOMPARE(r.json().value(QStringLiteral("situacao")), QJsonValue(situacao));
        QCOMPARE(r.json().value(QStringLiteral("nova")).toBool(),
                 situacao == QLatin1String("nova"));
    }

    void operators() {
        Folder f;
        auto gravar = [&](const QString& nome, const QByteArray& senha) {
            return f.run({QStringLiteral("usuario"), QStringLiteral("gravar"),
                          QStringLiteral("--nome"), nome, QStringLiteral("--tipo"),
                          QStringLiteral("USER")},
                         senha + "\n");
        };
        CliRun r = gravar(QStringLiteral("CURTA"), "abc");
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("A senha deve ter pelo menos 6 caracteres."));
        r = gravar(QStringLiteral("COPIA"), f.password().toUpper());
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err.trimmed(), QStringLiteral("Senha já usada por outro operador"));
        QCOMPARE(gravar(QStringLiteral("CAIXA"), "caixa1").code, 0);

        // The demo's administrator is the only one.
        r = f.run({QStringLiteral("usuario"), QStringLiteral("excluir"), QStringLiteral("--id"),
                   QStringLiteral("1")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("--ultimo-adm")));
        QCOMPARE(f.asAdmin({QStringLiteral("entrar"), QStringLiteral("--adm")}).code, 0);
        r = f.run({QStringLiteral("usuario"), QStringLiteral("excluir"), QStringLiteral("--id"),
                   QStringLiteral("1"), QStringLiteral("--ultimo-adm")});
        QCOMPARE(r.code, 0);
        QCOMPARE(f.asAdmin({QStringLiteral("entrar"), QStringLiteral("--adm")}).code, 1);
        QCOMPARE(f.run({QStringLiteral("usuario"), QStringLiteral("excluir"),
                        QStringLiteral("--id"), QStringLiteral("1")})
                     .code,
                 1);
    }
};

QTEST_MAIN(tst_admin_cli)
#include "tst_admin_cli.moc"
