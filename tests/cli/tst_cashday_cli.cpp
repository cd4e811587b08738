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

// A command of the test day, answered in JSON.
CliRun day(const CliFolder& f, QStringList args, const QByteArray& admin = {}) {
    return f.onDay(kDia, args << QStringLiteral("--json"), admin);
}

// `lancamento gravar --tipo TIPO --item I...` from "TIPO I..." (items are ESPECIE:VALOR[:NUMERO]).
QStringList entry(const char* line, const QString& descricao = {}) {
    const QStringList w = words(line);
    QStringList a = words("lancamento gravar --tipo") << w.first();
    if (!descricao.isNull())
        a << QStringLiteral("--descricao") << descricao;
    for (const QString& i : w.mid(1))
        a << QStringLiteral("--item") << i;
    return a;
}

} // namespace

class tst_cashday_cli : public QObject {
    Q_OBJECT
private slots:
    void wholeDay() {
        CliFolder f;
        QCOMPARE(day(f, words("caixa abrir")).code, 0);

        CliRun r = day(f, entry("entrada 100:200,00"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"entrada").toString(), QStringLiteral("200,00"));
        QCOMPARE(r.json().value(u"tipo").toString(), QStringLiteral("ENTRADA"));
        QCOMPARE(r.json().value(u"descricao").toString(), QStringLiteral("ABERTURA DE CAIXA"));
        QCOMPARE(day(f, words("caixa receber --avulso 8:1.000,00")).code, 0);

        r = day(f, entry("sangria 100:100,00 101:50,00:123"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"saida").toString(), QStringLiteral("150,00"));
        QCOMPARE(r.json().value(u"entrada").toString(), QStringLiteral("0,00"));
        const QJsonArray itens = r.json().value(u"itens").toArray();
        QCOMPARE(itens.size(), 2);
        QCOMPARE(itens[1].toObject().value(u"numero").toString(), QStringLiteral("123"));
        QCOMPARE(itens[1].toObject().value(u"especie").toInt(), 101);
        const int cheque = itens[1].toObject().value(u"id").toInt();
        // A payment out needs no administrator: a wrong second line does not matter.
        r = day(f, entry("saida 102:30,00", QStringLiteral("EMPENHO 0412")), "errada");
        QCOMPARE(r.code, 0);
        const int pagamento = r.json().value(u"id").toInt();

        QCOMPARE(day(f, words("cofre --entrada 150,00")).json().value(u"saldo").toString(),
                 QStringLiteral("150,00"));
        r = day(f, words("cofre --saida 200,00"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Valor não pode ser maior que o saldo disponível.")));
        QCOMPARE(day(f, words("cofre")).json().value(u"saldo").toString(),
                 QStringLiteral("150,00"));

        r = day(f, words("conferencia --provisoria --item 100:1.020,00"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"arrecadacao").toString(), QStringLiteral("1.000,00"));
        QCOMPARE(r.json().value(u"lancamentos").toString(), QStringLiteral("20,00"));
        QCOMPARE(r.json().value(u"diferenca").toString(), QStringLiteral("0,00"));

        r = day(f, words("caixa encerrar --sem-cupom"));
        QCOMPARE(r.json().value(u"entrada").toString(), QStringLiteral("200,00"));
        QCOMPARE(r.json().value(u"saida").toString(), QStringLiteral("180,00"));
        QCOMPARE(r.json().value(u"suprimento").toString(), QStringLiteral("150,00"));

        // The closed day refuses entries and the safe, but is counted.
        r = day(f, entry("saida 102:1,00", QStringLiteral("TARDE")));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("com o movimento fechado")));
        r = day(f, words("cofre --entrada 1,00"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(
            QStringLiteral("Você não pode movimentar o cofre, com o caixa já encerrado!!")));
        r = day(f, words("lancamento excluir --id") << QString::number(pagamento));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("O movimento desta data já foi fechado")));

        r = day(f, words("conferencia --item 100:1.000,00"));
        QCOMPARE(r.json().value(u"diferenca").toString(), QStringLiteral("-20,00"));
        r = day(f, words("conferencia --item 101:20,00:000123"));
        QCOMPARE(r.json().value(u"contado").toString(), QStringLiteral("1.020,00"));
        QCOMPARE(r.json().value(u"diferenca").toString(), QStringLiteral("0,00"));
        const QJsonArray linhas = r.json().value(u"itens").toArray();
        QCOMPARE(linhas.size(), 2);
        QCOMPARE(linhas[1].toObject().value(u"descricao").toString(), QStringLiteral("CHEQUE"));

        // Without the Path1 folder nothing is written.
        QVERIFY(QDir(f.path(QStringLiteral("Integracao"))).removeRecursively());
        r = day(f, words("integracao"));
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao gravar arquivo!!")));
        QVERIFY(QDir(f.path(QString())).mkdir(QStringLiteral("Integracao")));
        r = day(f, words("integracao"));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"registros").toInt(), 8);
        QCOMPARE(r.json().value(u"erros").toArray().size(), 0);
        QFile file(r.json().value(u"arquivo").toString());
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
        r = day(f, words("conferencia --excluir")
                       << QString::number(linhas[1].toObject().value(u"id").toInt()));
        QCOMPARE(r.json().value(u"diferenca").toString(), QStringLiteral("-20,00"));

        // Reopened, an item and a whole entry go.
        QCOMPARE(day(f, words("caixa reabrir --sem-cupom")).code, 0);
        r = day(f, words("lancamento item-excluir --id") << QString::number(cheque));
        QCOMPARE(r.code, 0);
        QCOMPARE(r.json().value(u"saida").toString(), QStringLiteral("100,00"));
        QCOMPARE(r.json().value(u"excluido").toBool(), false);
        QCOMPARE(day(f, words("lancamento excluir --id") << QString::number(pagamento)).code, 0);
        r = day(f, words("lancamento listar"));
        QCOMPARE(r.json().value(u"lancamentos").toArray().size(), 2);
        r = day(f, words("lancamento listar --tipo sangria"));
        QCOMPARE(r.json().value(u"total").toString(), QStringLiteral("100,00"));
    }

    void refusals() {
        CliFolder f;
        QCOMPARE(day(f, words("caixa abrir")).code, 0);
        struct Refusal {
            QStringList args;
            int code;
            const char* message;
            QByteArray admin = {};
        };
        const char* badValue = "Você precisa informar um valor válido!!";
        const Refusal cases[] = {
            {entry("saida 102:1,00"), 1, "Todos os campos obrigatórios devem ser preenchidos!!"},
            {entry("entrada 100:1,00", QStringLiteral("OUTRA")), 2, "ABERTURA DE CAIXA"},
            {entry("sangria 100:1,00"), 1, "Senha de administrador não aceita.", "errada"},
            {entry("sangria 100:1a,00"), 1, badValue},
            {entry("sangria 100:1,00,00"), 1, badValue},
            {entry("sangria 100:-1,00"), 1, badValue},
            {entry("sangria 100:5,00 8:1,00"), 1,
             "A espécie informada não é um tipo de dinheiro!!"},
            {entry("saida 102:1,00", QStringLiteral("D'AGUA")), 1, "aspa simples"},
            {entry("saida x:1,00", QStringLiteral("X")), 2, "ESPECIE:VALOR"},
            {entry("troco 100:1,00"), 2, "--tipo"},
            {words("cofre --entrada 1 --saida 1"), 2, "não os dois"},
            {words("cofre --entrada 0,00"), 1, badValue},
            {words("conferencia --provisoria --excluir 1"), 2, "Uso:"},
            {words("conferencia --excluir 77"), 1, "Você deve clicar no item antes!!"},
            {words("lancamento item-excluir --id 77"), 1, "Item 77 não encontrado."},
            {words("integracao"), 1, "Não há recebimentos neste movimento"},
        };
        for (const Refusal& x : cases) {
            const CliRun r = day(f, x.args, x.admin);
            QVERIFY2(r.code == x.code, qPrintable(x.args.join(QLatin1Char(' ')) + " -> " + r.err));
            QVERIFY2(r.err.contains(QString::fromUtf8(x.message)), qPrintable(r.err));
        }
        // Nothing of the refused entries was kept, not even the first item of the last one.
        QCOMPARE(day(f, words("lancamento listar")).json().value(u"lancamentos"),
                 QJsonValue(QJsonArray()));

        // A two-character counter: the file is written without its header and reported. The
        // day was opened by the template's counter: once it is closed, the administrator hands
        // the database over.
        QCOMPARE(day(f, words("caixa receber --avulso 8:10,00")).code, 0);
        QCOMPARE(day(f, words("caixa encerrar --sem-cupom")).code, 0);
        f.set(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("12"));
        QCOMPARE(f.asAdmin(words("guiche assumir")).code, 0);
        const QString out = f.path(QStringLiteral("remessa.INT"));
        const CliRun r = day(f, words("integracao --saida") << out);
        QCOMPARE(r.code, 1);
        QVERIFY(r.err.contains(QStringLiteral("Erro ao gerar: Header")));
        QCOMPARE(r.json().value(u"arquivo").toString(), out);
        QCOMPARE(r.json().value(u"erros").toArray(), QJsonArray{QStringLiteral("Header")});
        QCOMPARE(r.json().value(u"registros").toInt(), 2);
        QVERIFY(QFile::exists(out));
    }
};

QTEST_GUILESS_MAIN(tst_cashday_cli)
#include "tst_cashday_cli.moc"
