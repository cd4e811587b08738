// The Relatórios menu's previews: a day without movement is refused with a message, the
// bulletin's pages show, and "Imprimir" without a printer saves a PDF in Relatorios/ and says so.
#include "ReportsMenu.h"
#include "TestApp.h"
#include "clsMovimento.h"
#include "clsRecebimentos.h"
#include "frmOpcoes.h"

#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTest>

namespace {

const QDate kDia(2026, 11, 23);

void openDay(TestApp& app) {
    clsMovimento mov(app.db());
    mov.MDATA = kDia;
    mov.MOV = 3;
    mov.STATUS = QStringLiteral("ABERTO");
    QVERIFY(mov.inserirNovo());
    QVERIFY(app.db().SQLExecute(QStringLiteral(
        "INSERT INTO CodBarra (IDCOD, IDTIPO, DESCRICAO, PADRAO) VALUES (7, 'AV1', 'TAXA', 'A')")));
    clsRecebimentos r(app.db());
    r.AUTENTICA = 1;
    r.CODBARRA = clsRecebimentos::kSemCodigo;
    r.IDMOVIMENTO = qint16(mov.ID);
    r.TIPO = 7;
    r.VALOR = Money::fromCents(12345);
    QVERIFY(r.SQLInsert());
}

} // namespace

class tst_report_preview : public QObject {
    Q_OBJECT
private slots:
    void aDayWithoutMovementIsRefused() {
        TestApp app;
        QCOMPARE(ReportsMenu::boletim(app.ctx(), kDia, nullptr), nullptr);
        QCOMPARE(app.dialogs().texts(),
                 QStringList{QStringLiteral("Não há movimento em 23/11/2026.")});
        QCOMPARE(ReportsMenu::periodo(app.ctx(), kDia, kDia.addDays(-1), nullptr), nullptr);
        QCOMPARE(app.dialogs().texts().last(),
                 QStringLiteral("A data final deve ser igual ou posterior à inicial."));
    }

    void withoutAPrinterTheBulletinBecomesAPdfAndTheOperatorIsTold() {
        if (!QPrinterInfo::availablePrinterNames().isEmpty())
            QSKIP("this machine has a printer");
        TestApp app;
        openDay(app);
        std::unique_ptr<QDialog> dlg(ReportsMenu::boletim(app.ctx(), kDia, nullptr));
        QVERIFY(dlg);
        dlg->show();
        auto* preview = dlg->findChild<QPrintPreviewWidget*>(QStringLiteral("preview"));
        QVERIFY(preview);
        QTRY_VERIFY(preview->pageCount() >= 1);
        const QString folder = app.path(QStringLiteral("Relatorios"));
        QVERIFY(dlg->findChild<QLabel*>(QStringLiteral("lblDestino"))->text().contains(folder));

        dlg->findChild<QPushButton*>(QStringLiteral("cmdImprimir"))->click();
        const QStringList pdfs = QDir(folder).entryList({QStringLiteral("boletim_20261123_*.pdf")});
        QCOMPARE(pdfs.size(), 1);
        QCOMPARE(app.dialogs().shown().size(), 1);
        QCOMPARE(app.dialogs().shown()[0].title, QStringLiteral("Aviso"));
        QCOMPARE(app.dialogs().shown()[0].text,
                 QStringLiteral("Nenhuma impressora instalada. O relatório foi gravado em ") +
                     QDir::toNativeSeparators(QDir(folder).filePath(pdfs[0])));
        // A second print never lands on the first file.
        dlg->findChild<QPushButton*>(QStringLiteral("cmdImprimir"))->click();
        QCOMPARE(QDir(folder).entryList({QStringLiteral("*.pdf")}).size(), 2);
    }

    void theOptionsShowWhereThePdfsGo() {
        TestApp app;
        frmOpcoes form(app.ctx());
        const QString text = form.findChild<QLabel*>(QStringLiteral("lblPastaPdf"))->text();
        QVERIFY2(text.contains(QDir::toNativeSeparators(app.path(QStringLiteral("Cupons")))),
                 qPrintable(text));
        QVERIFY(text.contains(QDir::toNativeSeparators(app.path(QStringLiteral("Relatorios")))));
    }
};

QTEST_MAIN(tst_report_preview)
#include "tst_report_preview.moc"
