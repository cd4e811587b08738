// The cash count, the provisional count and the safe, driven through their widgets.
#include "IniFile.h"
#include "IntegrationFile.h"
#include "TestApp.h"
#include "clsCofre.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"
#include "frmCofre.h"
#include "frmLancaTemp.h"
#include "frmLancamentos.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

namespace {

struct Setup {
    TestApp app;
    clsMovimento mov{app.db()};
    explicit Setup(const char* status = "FECHADO") {
        QVERIFY(app.db().SQLExecute(QStringLiteral(
            "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (100, 'DIN', "
            "'DINHEIRO', 'S'), (101, 'CHQ', 'CHEQUE', 'S'), (7, 'AV1', 'TAXA', 'A')")));
        mov.MDATA = QDate(2026, 11, 23);
        mov.MOV = 12;
        mov.STATUS = QLatin1String(status);
        mov.VALOR_ARRECADADO = Money::fromReais(1000);
        mov.ENTRADA = Money::fromReais(200);
        mov.SAIDA = Money::fromReais(100);
        QVERIFY(mov.inserirNovo());
        for (int i = 1; i <= 3; ++i) {
            clsRecebimentos r(app.db());
            r.AUTENTICA = static_cast<qint16>(i);
            r.CODBARRA = clsRecebimentos::kSemCodigo;
            r.IDMOVIMENTO = static_cast<qint16>(mov.ID);
            r.TIPO = 7;
            r.VALOR = Money::fromReais(100);
            QVERIFY(r.SQLInsert());
        }
        app.dialogs().clear();
    }
};

template <class T> T* w(QWidget* form, const char* name) {
    return form->findChild<T*>(QLatin1String(name));
}

QString text(QWidget* form, const char* name) {
    return w<QLineEdit>(form, name)->text();
}

void countLine(QWidget* form, int row, const QString& valor) {
    w<QComboBox>(form, "Combo1")->setCurrentIndex(row);
    w<QLineEdit>(form, "mskvalor")->setText(valor);
    w<QPushButton>(form, "Command5")->click();
}

} // namespace

class tst_count_screens : public QObject {
    Q_OBJECT
private slots:
    void countOfAClosedDay() {
        Setup s;
        frmLancamentos f(s.app.ctx(), s.mov.MDATA);
        QVERIFY(f.loaded());
        QCOMPARE(text(&f, "txtid_tabela"), QString::number(s.mov.ID));
        QCOMPARE(w<QLabel>(&f, "lblMov")->text(), QStringLiteral("0012"));
        QCOMPARE(w<QLabel>(&f, "lblDia")->text(), QStringLiteral("Caixa dia: 23 - 11 - 2026"));
        QCOMPARE(text(&f, "txtarrecadacao"), QStringLiteral("1.000,00"));
        QCOMPARE(text(&f, "txtsangria"), QStringLiteral("100,00"));
        QCOMPARE(text(&f, "txtsaldo"), QStringLiteral("-1.100,00"));

        countLine(&f, 0, QStringLiteral("1.000,00"));
        countLine(&f, 1, QStringLiteral("100,00"));
        auto* list = w<QTreeWidget>(&f, "List1");
        QCOMPARE(list->topLevelItem(1)->text(1), QStringLiteral("CHEQUE"));
        QCOMPARE(text(&f, "txttotal"), QStringLiteral("1.100,00"));
        QCOMPARE(text(&f, "txtsaldo"), QStringLiteral("0,00"));
        QCOMPARE(w<QLabel>(&f, "lblStatus")->text(),
                 QStringLiteral("Total de itens contabilizados: 2"));
        QVERIFY(s.app.dialogs().shown().isEmpty());

        countLine(&f, 0, QStringLiteral("1,0,0"));
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Você precisa informar um valor válido!!")});
        QCOMPARE(list->topLevelItemCount(), 2);

        auto* del = f.findChild<QAction*>(QStringLiteral("mnudel"));
        s.app.dialogs().clear();
        list->setCurrentItem(nullptr);
        del->trigger();
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Você deve clicar no item antes!!")});
        list->setCurrentItem(list->topLevelItem(1));
        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        del->trigger();
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Confirma exclusão do Item: ") +
                             QStringLiteral("%1").arg(2, 4, 10, QLatin1Char('0'))});
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(text(&f, "txtsaldo"), QStringLiteral("-100,00"));
    }

    void generateFromTheScreen() {
        Setup s;
        QDir(s.app.folder()).mkdir(QStringLiteral("Integracao"));
        s.app.setOption(QStringLiteral("Export"), QStringLiteral("Path1"),
                        QStringLiteral("Integracao/"));
        s.app.setOption(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("2"));
        frmLancamentos f(s.app.ctx(), s.mov.MDATA);
        countLine(&f, 0, QStringLiteral("250,00"));
        f.setPausa(0);
        s.app.dialogs().pushAnswer(DialogAnswer::No);
        w<QPushButton>(&f, "Command1")->click();
        QCOMPARE(s.app.dialogs().texts(),
                 QStringList{QStringLiteral("Confirma a criação do arquivo remessa?")});
        const QString path = s.app.path(QStringLiteral("Integracao/2_202611231000.INT"));
        QVERIFY(!QFile::exists(path));
        s.app.dialogs().clear();
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        w<QPushButton>(&f, "Command1")->click();
        QCOMPARE(s.app.dialogs().texts(),
                 (QStringList{QStringLiteral("Confirma a criação do arquivo remessa?"),
                              QStringLiteral("Geração de arquivo efetuada com sucesso!!")}));
        QCOMPARE(w<QProgressBar>(&f, "pbr")->value(), 3);
        QCOMPARE(w<QProgressBar>(&f, "pbr")->maximum(), 3);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().split('\n');
        QCOMPARE(lines.size(), 6); // header, three receipts, footer, and the last line end
        QCOMPARE(lines.at(4).mid(25, 15), QByteArray("000000000025000")); // counted total
        QVERIFY(f.isEnabled());
    }

    void dayWithoutMovement() {
        Setup s;
        frmLancamentos f(s.app.ctx(), QDate(2026, 11, 20));
        QVERIFY(!f.loaded());
        QCOMPARE(
            s.app.dialogs().texts(),
            QStringList{QStringLiteral("Não foi encontrado nenhum movimento com essa data!!")});
        QVERIFY(!w<QPushButton>(&f, "Command5")->isEnabled());
        QVERIFY(!w<QPushButton>(&f, "Command1")->isEnabled());
        w<QDateEdit>(&f, "dtpData")->setDate(s.mov.MDATA);
        QVERIFY(!f.loaded()); // not while the date is being typed
        emit w<QDateEdit>(&f, "dtpData")->editingFinished();
        QVERIFY(f.loaded());
        QCOMPARE(text(&f, "txtarrecadacao"), QStringLiteral("1.000,00"));
    }

    void provisionalCountStoresNothing() {
        Setup s("ABERTO");
        frmLancaTemp f(s.app.ctx(), s.mov);
        QCOMPARE(w<QLabel>(&f, "lblAviso")->text(),
                 QStringLiteral("Os lançamentos gerados nesta tela não servem para "
                                "contabilização de encerramento de caixa."));
        QCOMPARE(text(&f, "txtarrecadacao"), QStringLiteral("R$ 300,00")); // summed now
        countLine(&f, 0, QStringLiteral("250,00"));
        countLine(&f, 1, QStringLiteral("40,00"));
        QCOMPARE(text(&f, "txttotal"), QStringLiteral("R$ 290,00"));
        QCOMPARE(text(&f, "txtsaldo"), QStringLiteral("R$ -10,00"));
        QCOMPARE(w<QLabel>(&f, "lblStatus")->text(),
                 QStringLiteral("Total de itens contabilizados: 2"));
        auto* list = w<QTreeWidget>(&f, "List1");
        list->setCurrentItem(list->topLevelItem(0));
        s.app.dialogs().pushAnswer(DialogAnswer::Yes);
        f.findChild<QAction*>(QStringLiteral("mnudel"))->trigger();
        QCOMPARE(text(&f, "txttotal"), QStringLiteral("R$ 40,00"));
        QCOMPARE(s.app.count(QStringLiteral("ConfCaixa")), 0);
    }

    void safeScreen() {
        Setup s("ABERTO");
        QVERIFY(s.app.db().SQLExecute(QStringLiteral("UPDATE Cofre SET SALDO = ? WHERE ID = 1"),
                                      {Money::fromReais(1000).units()}));
        frmCofre f(s.app.ctx(), s.mov.ID);
        QCOMPARE(text(&f, "txtsaldo"), QStringLiteral("1.000,00"));
        w<QRadioButton>(&f, "optSaida")->setChecked(true);
        w<QLineEdit>(&f, "mskvalor")->setText(QStringLiteral("abc"));
        w<QPushButton>(&f, "Command1")->click();
        QCOMPARE(s.app.dialogs().last().text,
                 QStringLiteral("Você precisa informar um valor válido!!"));
        QCOMPARE(text(&f, "mskvalor"), QString()); // cleared for a new value
        w<QLineEdit>(&f, "mskvalor")->setText(QStringLiteral("1.000,00"));
        w<QPushButton>(&f, "Command1")->click();
        QCOMPARE(s.app.dialogs().last().text,
                 QStringLiteral("Valor gravado. Saldo atualizado para R$ 0,00"));
        QCOMPARE(s.app.dialogs().last().icon, DialogIcon::Information);
        QCOMPARE(text(&f, "txtsaldo"), QStringLiteral("0,00"));
        QCOMPARE(clsCofre::saldo(s.app.db()), std::optional<Money>(Money()));
    }
};

QTEST_MAIN(tst_count_screens)
#include "tst_count_screens.moc"
