// The error report: message box first, then the Log.ini record with its exact layout.
#include "Clock.h"
#include "ErrorLog.h"
#include "ScriptedDialogPort.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_errorlog : public QObject {
    Q_OBJECT
private slots:
    void recordLayout() {
        QTemporaryDir dir;
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime(QDate(2026, 2, 3), QTime(4, 5, 6)));
        ErrorLog log(dialogs, clock, dir.path());
        log.report(
            QStringLiteral("Função Lista_codigos"),
            {3021, QStringLiteral("Nenhum registro atual."), QStringLiteral("ADODB.Recordset")});
        log.report(QStringLiteral("Função de Leitura Código de Barras"),
                   {-5, QStringLiteral("Data inválida"), QStringLiteral("Tolvane")});

        QFile f(dir.filePath(QStringLiteral("Log.ini")));
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray sep = QByteArray(100, '=') + "\r\n";
        const QByteArray expected = "Erro interno n\xb0: 3021\tData/Hora: 03/02/2026 04:05:06\r\n"
                                    "Descri\xe7\xe3o: Nenhum registro atual.\r\n"
                                    "Origem: ADODB.Recordset\r\n"
                                    "Local: Fun\xe7\xe3o Lista_codigos\r\n" +
                                    sep +
                                    "Erro interno n\xb0: -5\tData/Hora: 03/02/2026 04:05:06\r\n"
                                    "Descri\xe7\xe3o: Data inv\xe1lida\r\n"
                                    "Origem: Tolvane\r\n"
                                    "Local: Fun\xe7\xe3o de Leitura C\xf3"
                                    "digo de Barras\r\n" +
                                    sep;
        QCOMPARE(f.readAll(), expected);

        QCOMPARE(dialogs.shown().size(), 2);
        QCOMPARE(dialogs.shown().first().icon, DialogIcon::Exclamation);
        QCOMPARE(dialogs.shown().first().text,
                 QStringLiteral("Houve um erro interno:\r\n\r\nNúmero do erro:3021\r\nDescrição "
                                ":Nenhum registro atual.\r\n"
                                "Origem :ADODB.Recordset / Função Lista_codigos"));
    }

    void folderEndingInSeparator() {
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime::currentDateTime());
        QCOMPARE(ErrorLog(dialogs, clock, QStringLiteral("/pasta/")).logPath(),
                 QStringLiteral("/pasta/Log.ini"));
        QCOMPARE(ErrorLog(dialogs, clock, QStringLiteral("/pasta")).logPath(),
                 QStringLiteral("/pasta/Log.ini"));
        QCOMPARE(ErrorLog(dialogs, clock, QStringLiteral("C:\\"))
                     .logPath()
                     .count(QStringLiteral("Log.ini")),
                 1);
    }

    void unwritableLogStillShowsTheBox() {
        ScriptedDialogPort dialogs;
        FixedClock clock(QDateTime::currentDateTime());
        ErrorLog log(dialogs, clock, QStringLiteral("/pasta/que/nao/existe"));
        log.report(QStringLiteral("Local"), {1, QStringLiteral("x"), QStringLiteral("y")});
        QCOMPARE(dialogs.shown().size(), 1);
        QVERIFY(!QFile::exists(QStringLiteral("/pasta/que/nao/existe/Log.ini")));
    }
};

QTEST_GUILESS_MAIN(tst_errorlog)
#include "tst_errorlog.moc"
