// A whole cash day through the commands: opening float, receipts, a withdrawal of two kinds,
// a payment out, the safe, a provisional count, closing, a count that balances and one that
// does not, the integration file, and the refusals on the way.
#include "CliFolder.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

namespace {

const QString kDia = QStringLiteral("23/11/2026");

class Folder : public CliFolder {
public:
    // The operator's password, then (for entries and withdrawals) the administrator's.
    CliRun day(QStringList args, const QByteArray& admin = {}) const {
        args << QStringLiteral("--data") << kDia << QStringLiteral("--json");
        return run(args, password() + "\n" + (admin.isNull() ? password() : admin) + "\n");
    }
};

QStringList entry(const char* tipo, const QStringList& items, const QString& descricao = {}) {
    QStringList a = {QStringLiteral("lancamento"), QStringLiteral("gravar"),
                     QStringLiteral("--tipo"), QLatin1String(tipo)};
    if (!descricao.isNull())
        a << QStringLiteral("--descricao") << descricao;
    for (const QString& i : items)
        a << QStringLiteral("--item") << i;
    return a;
}

QStringList conferencia(const QStringList& extra = {}) {
    return QStringList{QStringLiteral("conferencia")} + extra;
}

} // namespace

class tst_cashday_cli : public QObject {
    Q_OBJECT
private slots:
    void wholeDay() {
        Folder f;
        QVERIFY(!f.password().isEmpty());
        QCOMPARE(f.day({QStringLiteral("caixa"), QStringLiteral("abrir")}).code, 0);

        CliRun r = f.day(entry("entrada", {QStringLiteral("100:200,00")}));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("entrada")).toString(), QStringLiteral("200,00"));
        QCOMPARE(r.json().value(QStringLiteral("tipo")).toString(), QStringLiteral("ENTRADA"));
        QCOMPARE(r.json().value(QStringLiteral("descricao")).toString(),
                 QStringLiteral("ABERTURA DE CAIXA"));
        QCOMPARE(f.day({QStringLiteral("caixa"), QStringLiteral("receber"),
                        QStringLiteral("--avulso"), QStringLiteral("8:1.000,00")})
                     .code,
                 0);

        r = f.day(
            entry("sangria", {QStringLiteral("100:100,00"), QStringLiteral("101:50,00:123")}));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("saida")).toString(), QStringLiteral("150,00"));
        QCOMPARE(r.json().value(QStringLiteral("entrada")).toString(), QStringLiteral("0,00"));
        const QJsonArray itens = r.json().value(QStringLiteral("itens")).toArray();
        QCOMPARE(itens.size(), 2);
        QCOMPARE(itens[1].toObject().value(QStringLiteral("numero")).toString(),
                 QStringLiteral("123"));
        QCOMPARE(itens[1].toObject().value(QStringLiteral("especie")).toInt(), 101);
        const int cheque = itens[1].toObject().value(QStringLiteral("id")).toInt();
        // A payment out needs no administrator: a wrong second line does not matter.
        r = f.day(entry("saida", {QStringLiteral("102:30,00")}, QStringLiteral("EMPENHO 0412")),
                  "errada");
        QCOMPARE(r.code, 0);
        const int pagamento = r.json().value(QStringLiteral("id")).toInt();

        QCOMPARE(
            f.day({QStringLiteral("cofre"), QStringLiteral("--entrada"), QStringLiteral("150,00")})
                .json()
                .value(QStringLiteral("saldo"))
                .toString(),
            QStringLiteral("150,00"));
        r = f.day({QStringLiteral("cofre"), QStringLiteral("--saida"), QStringLiteral("200,00")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Valor não pode ser maior que o saldo disponível.")));
        QCOMPARE(f.day({QStringLiteral("cofre")}).json().value(QStringLiteral("saldo")).toString(),
                 QStringLiteral("150,00"));

        r = f.day(conferencia({QStringLiteral("--provisoria"), QStringLiteral("--item"),
                               QStringLiteral("100:1.020,00")}));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("arrecadacao")).toString(),
                 QStringLiteral("1.000,00"));
        QCOMPARE(r.json().value(QStringLiteral("lancamentos")).toString(), QStringLiteral("20,00"));
        QCOMPARE(r.json().value(QStringLiteral("diferenca")).toString(), QStringLiteral("0,00"));

        r = f.day(
            {QStringLiteral("caixa"), QStringLiteral("encerrar"), QStringLiteral("--sem-cupom")});
        QCOMPARE(r.json().value(QStringLiteral("entrada")).toString(), QStringLiteral("200,00"));
        QCOMPARE(r.json().value(QStringLiteral("saida")).toString(), QStringLiteral("180,00"));
        QCOMPARE(r.json().value(QStringLiteral("suprimento")).toString(), QStringLiteral("150,00"));

        // The closed day refuses entries and the safe, but is counted.
        r = f.day(entry("saida", {QStringLiteral("102:1,00")}, QStringLiteral("TARDE")));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("com o movimento fechado")));
        r = f.day({QStringLiteral("cofre"), QStringLiteral("--entrada"), QStringLiteral("1,00")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(
            QStringLiteral("Você não pode movimentar o cofre, com o caixa já encerrado!!")));
        r = f.day({QStringLiteral("lancamento"), QStringLiteral("excluir"), QStringLiteral("--id"),
                   QString::number(pagamento)});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("O movimento desta data já foi fechado")));

        r = f.day(conferencia({QStringLiteral("--item"), QStringLiteral("100:1.000,00")}));
        QCOMPARE(r.json().value(QStringLiteral("diferenca")).toString(), QStringLiteral("-20,00"));
        r = f.day(conferencia({QStringLiteral("--item"), QStringLiteral("101:20,00:000123")}));
        QCOMPARE(r.json().value(QStringLiteral("contado")).toString(), QStringLiteral("1.020,00"));
        QCOMPARE(r.json().value(QStringLiteral("diferenca")).toString(), QStringLiteral("0,00"));
        const QJsonArray linhas = r.json().value(QStringLiteral("itens")).toArray();
        QCOMPARE(linhas.size(), 2);
        QCOMPARE(linhas[1].toObject().value(QStringLiteral("descricao")).toString(),
                 QStringLiteral("CHEQUE"));

        // Without the Path1 folder nothing is written.
        QVERIFY(QDir(f.path(QStringLiteral("Integracao"))).removeRecursively());
        r = f.day({QStringLiteral("integracao")});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao gravar arquivo!!")));
        QVERIFY(QDir(f.path(QString())).mkdir(QStringLiteral("Integracao")));
        r = f.day({QStringLiteral("integracao")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("registros")).toInt(), 8);
        QCOMPARE(r.json().value(QStringLiteral("erros")).toArray().size(), 0);
        QFile file(r.json().value(QStringLiteral("arquivo")).toString());
        QVERIFY(file.fileName().startsWith(f.path(QStringLiteral("Integracao/1_"))));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QString kinds;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (line.isEmpty())
                continue;
            QCOMPARE(line.size(), 201);
            QVERIFY(line.endsWith('\r'));
            kinds += QLatin1Char(line.at(0));
        }
        QCOMPARE(kinds, QStringLiteral("ARJDDSDZ"));

        // The count after a line is deleted.
        r = f.day(conferencia(
            {QStringLiteral("--excluir"),
             QString::number(linhas[1].toObject().value(QStringLiteral("id")).toInt())}));
        QCOMPARE(r.json().value(QStringLiteral("diferenca")).toString(), QStringLiteral("-20,00"));

        // Reopened, an item and a whole entry go.
        QCOMPARE(f.day({QStringLiteral("caixa"), QStringLiteral("reabrir"),
                        QStringLiteral("--sem-cupom")})
                     .code,
                 0);
        r = f.day({QStringLiteral("lancamento"), QStringLiteral("item-excluir"),
                   QStringLiteral("--id"), QString::number(cheque)});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(QStringLiteral("saida")).toString(), QStringLiteral("100,00"));
        QCOMPARE(r.json().value(QStringLiteral("excluido")).toBool(), false);
        QCOMPARE(f.day({QStringLiteral("lancamento"), QStringLiteral("excluir"),
                        QStringLiteral("--id"), QString::number(pagamento)})
                     .code,
                 0);
        r = f.day({QStringLiteral("lancamento"), QStringLiteral("listar")});
        QCOMPARE(r.json().value(QStringLiteral("lancamentos")).toArray().size(), 2);
        r = f.day({QStringLiteral("lancamento"), QStringLiteral("listar"), QStringLiteral("--tipo"),
                   QStringLiteral("sangria")});
        QCOMPARE(r.json().value(QStringLiteral("total")).toString(), QStringLiteral("100,00"));
    }

    void refusals() {
        Folder f;
        QCOMPARE(f.day({QStringLiteral("caixa"), QStringLiteral("abrir")}).code, 0);
        const QList<std::tuple<QStringList, QByteArray, int, QString>> cases = {
            {entry("saida", {QStringLiteral("102:1,00")}),
             {},
             1,
             QStringLiteral("Todos os campos obrigatórios devem ser preenchidos!!")},
            {entry("entrada", {QStringLiteral("100:1,00")}, QStringLiteral("OUTRA")),
             {},
             2,
             QStringLiteral("ABERTURA DE CAIXA")},
            {entry("sangria", {QStringLiteral("100:1,00")}), "errada", 1,
             QStringLiteral("Senha de administrador não aceita.")},
            {entry("sangria", {QStringLiteral("100:1a,00")}),
             {},
             1,
             QStringLiteral("Você precisa informar um valor válido!!")},
            {entry("sangria", {QStringLiteral("100:1,00,00")}),
             {},
             1,
             QStringLiteral("Você precisa informar um valor válido!!")},
            {entry("sangria", {QStringLiteral("100:-1,00")}),
             {},
             1,
             QStringLiteral("Você precisa informar um valor válido!!")},
            {entry("sangria", {QStringLiteral("100:5,00"), QStringLiteral("8:1,00")}),
             {},
             1,
             QStringLiteral("A espécie informada não é um tipo de dinheiro!!")},
            {entry("saida", {QStringLiteral("102:1,00")}, QStringLiteral("D'AGUA")),
             {},
             1,
             QStringLiteral("aspa simples")},
            {entry("saida", {QStringLiteral("x:1,00")}, QStringLiteral("X")),
             {},
             2,
             QStringLiteral("ESPECIE:VALOR")},
            {entry("troco", {QStringLiteral("100:1,00")}), {}, 2, QStringLiteral("--tipo")},
            {{QStringLiteral("cofre"), QStringLiteral("--entrada"), QStringLiteral("1"),
              QStringLiteral("--saida"), QStringLiteral("1")},
             {},
             2,
             QStringLiteral("não os dois")},
            {{QStringLiteral("cofre"), QStringLiteral("--entrada"), QStringLiteral("0,00")},
             {},
             1,
             QStringLiteral("Você precisa informar um valor válido!!")},
            {conferencia({QStringLiteral("--provisoria"), QStringLiteral("--excluir"),
                          QStringLiteral("1")}),
             {},
             2,
             QStringLiteral("Uso:")},
            {conferencia({QStringLiteral("--excluir"), QStringLiteral("77")}),
             {},
             1,
             QStringLiteral("Você deve clicar no item antes!!")},
            {{QStringLiteral("lancamento"), QStringLiteral("item-excluir"), QStringLiteral("--id"),
              QStringLiteral("77")},
             {},
             1,
             QStringLiteral("Item 77 não encontrado.")},
            {{QStringLiteral("integracao")},
             {},
             1,
             QStringLiteral("Não há recebimentos neste movimento")},
        };
        for (const auto& [args, admin, code, message] : cases) {
            const CliRun r = f.day(args, admin);
            QVERIFY2(r.code == code, qPrintable(args.join(QLatin1Char(' ')) + " -> " + r.err));
            QVERIFY2(r.err.contains(message), qPrintable(r.err));
        }
        // Nothing of the refused entries was kept, not even the first item of the last one.
        const CliRun list = f.day({QStringLiteral("lancamento"), QStringLiteral("listar")});
        QCOMPARE(list.json().value(QStringLiteral("lancamentos")).toArray().size(), 0);
    }

    // A two-character counter: the file is written without its header and reported.
    void twoCharacterCounter() {
        Folder f;
        QCOMPARE(f.day({QStringLiteral("caixa"), QStringLiteral("abrir")}).code, 0);
        QCOMPARE(f.day({QStringLiteral("caixa"), QStringLiteral("receber"),
                        QStringLiteral("--avulso"), QStringLiteral("8:10,00")})
                     .code,
                 0);
        f.set(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("12"));
        // The day was opened by the counter of the template: the administrator hands the
        // database over to the renumbered counter.
        QCOMPARE(f.asAdmin({QStringLiteral("guiche"), QStringLiteral("assumir")}).code, 0);
        const QString out = f.path(QStringLiteral("remessa.INT"));
        const CliRun r = f.day({QStringLiteral("integracao"), QStringLiteral("--saida"), out});
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao gerar: Header")));
        QCOMPARE(r.json().value(QStringLiteral("arquivo")).toString(), out);
        QCOMPARE(r.json().value(QStringLiteral("erros")).toArray(),
                 QJsonArray{QStringLiteral("Header")});
        QCOMPARE(r.json().value(QStringLiteral("registros")).toInt(), 2);
        QVERIFY(QFile::exists(out));
    }
};

QTEST_GUILESS_MAIN(tst_cashday_cli)
#include "tst_cashday_cli.moc"
