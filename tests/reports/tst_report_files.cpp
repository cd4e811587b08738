// The files a report writes at a path the operator gives, and the CSV's conventions.
#include "PeriodCsv.h"
#include "PeriodReport.h"
#include "ReportFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_report_files : public QObject {
    Q_OBJECT
private slots:
    void targetsThatAreRefused_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("existing file")
            << QStringLiteral("ja.pdf") << QStringLiteral("já existe e não será substituído");
        QTest::newRow("missing folder")
            << QStringLiteral("nao/existe.pdf") << QStringLiteral("A pasta de");
        QTest::newRow("no name") << QString() << QStringLiteral("Informe o nome do arquivo.");
        QTest::newRow("a new file") << QStringLiteral("novo.pdf") << QString();
    }

    void targetsThatAreRefused() {
        QFETCH(QString, name);
        QFETCH(QString, message);
        QTemporaryDir dir;
        QFile existing(dir.filePath(QStringLiteral("ja.pdf")));
        QVERIFY(existing.open(QIODevice::WriteOnly));
        existing.close();
        const QString path = name.isEmpty() ? QString() : dir.filePath(name);
        const QString why = ReportFile::recusa(path);
        if (message.isEmpty())
            QVERIFY2(why.isEmpty(), qPrintable(why));
        else
            QVERIFY2(why.contains(message), qPrintable(why));
    }

    // A name taken between the check and the end keeps its file; the new one goes away.
    void aNameTakenMeanwhileIsKept() {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("r.csv"));
        const QString temp = ReportFile::temporario(path);
        QFile t(temp);
        QVERIFY(t.open(QIODevice::WriteOnly));
        t.write("novo");
        t.close();
        QFile other(path);
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.write("de outro");
        other.close();
        QString why;
        QVERIFY(!ReportFile::publicar(temp, path, &why));
        QVERIFY(!QFile::exists(temp));
        QVERIFY(other.open(QIODevice::ReadOnly));
        QCOMPARE(other.readAll(), QByteArray("de outro"));
    }

    void csvAsASpreadsheetOpensIt() {
        PeriodReport p;
        PeriodReport::Day d;
        d.data = QDate(2026, 11, 23);
        d.mov = 7;
        ReceiptFigures::Kind k;
        k.idcod = 3;
        k.descricao = QStringLiteral("ISSQN; \"MÓVEIS\"");
        k.quantidade = 2;
        k.valorFace = Money::fromCents(123456);
        k.encargos = Money::fromCents(2590);
        k.total = Money::fromCents(126046);
        d.figuras.porTipo << k;
        p.dias << d;
        const QByteArray bytes = PeriodCsv::texto(p);
        QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
        const QStringList lines =
            QString::fromUtf8(bytes.mid(3)).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[1],
                 QStringLiteral("23/11/2026;7;3;\"ISSQN; \"\"MÓVEIS\"\"\";2;1234,56;25,90;"
                                "1260,46"));
    }
};

QTEST_GUILESS_MAIN(tst_report_files)
#include "tst_report_files.moc"
