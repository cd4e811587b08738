// Config.ini: the profile-function semantics and the loading quirks of Carrega_config.
#include "IniFile.h"
#include "Settings.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class tst_settings : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
    QString ini() const { return m_dir.filePath(QStringLiteral("Config.ini")); }
    void writeRaw(const QByteArray& bytes) {
        QFile f(ini());
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
    }

private slots:
    void readMatchesWithoutCase_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        QTest::newRow("exact") << "Export"
                               << "guiche"
                               << "7";
        QTest::newRow("case of both") << "EXPORT"
                                      << "GUICHE"
                                      << "7";
        QTest::newRow("blanks trimmed") << "Mensagem"
                                        << "pref"
                                        << "PREFEITURA DE AÇAÍ";
        QTest::newRow("empty value") << "Export"
                                     << "rede"
                                     << "";
        QTest::newRow("missing key") << "Export"
                                     << "nada"
                                     << "";
        QTest::newRow("missing section") << "Nada"
                                         << "guiche"
                                         << "";
        QTest::newRow("key of another section") << "Mensagem"
                                                << "guiche"
                                                << "";
        QTest::newRow("comment is not a key") << "Print"
                                              << ";modo"
                                              << "";
    }
    void readMatchesWithoutCase() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, expected);
        writeRaw(QByteArray("[export]\r\nGuiche = 7 \r\nrede=\r\n[Mensagem]\r\npref=  ") +
                 QStringLiteral("PREFEITURA DE AÇAÍ").toLatin1() + "\r\n[Print]\r\n;modo=1\r\n");
        QCOMPARE(IniFile::read(section, key, ini()), expected);
    }

    void missingFileReadsEmpty() {
        QCOMPARE(IniFile::read(QStringLiteral("Export"), QStringLiteral("guiche"),
                               m_dir.filePath(QStringLiteral("nao-existe.ini"))),
                 QString());
    }

    void longValuesAreCut() {
        writeRaw("[A]\r\nk=" + QByteArray(300, 'x') + "\r\n");
        QCOMPARE(IniFile::read(QStringLiteral("A"), QStringLiteral("k"), ini()).size(), 254);
    }

    void writeEditsInPlace() {
        writeRaw(
            "; cabeçalho\r\n[Export]\r\nguiche=1\r\nPath3=C:\\x\\\r\n\r\n[Print]\r\nmodo=0\r\n");
        QVERIFY(IniFile::write(QStringLiteral("export"), QStringLiteral("GUICHE"),
                               QStringLiteral("2"), ini()));
        QVERIFY(IniFile::write(QStringLiteral("Export"), QStringLiteral("rede"),
                               QStringLiteral("1"), ini()));
        QVERIFY(IniFile::write(QStringLiteral("Novo"), QStringLiteral("k"), QStringLiteral("ã"),
                               ini()));
        QFile f(ini());
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QByteArray bytes = f.readAll();
        QCOMPARE(bytes, QByteArray("; cabe\xe7"
                                   "alho\r\n[Export]\r\nGUICHE=2\r\nPath3=C:\\x\\\r\nrede=1\r\n\r\n"
                                   "[Print]\r\nmodo=0\r\n[Novo]\r\nk=\xe3\r\n"));
    }

    void utf8FileIsStillRead() {
        writeRaw(QStringLiteral("[Mensagem]\npref=SÃO JOÃO\n").toUtf8());
        QCOMPARE(IniFile::read(QStringLiteral("Mensagem"), QStringLiteral("pref"), ini()),
                 QStringLiteral("SÃO JOÃO"));
    }

    void loadOrderAndConversions() {
        writeRaw(
            "[Export]\r\nguiche=03\r\nrede=1\r\nPath3=/x/\r\n[Opcoes]\r\nporta=COM1\r\njuros=2\r\n"
            "[Print]\r\nporta=COM1\r\nprint_cupom=abc\r\nlineFeed=70000\r\nip=\r\n[Reserva]"
            "\r\nsoma= 1 \r\n");
        Settings s;
        s.print_cupom = 5; // a failed conversion keeps the previous value
        s.opcoes_porta = 9;
        s.lineFeed = 4;
        QVERIFY(Carrega_config(ini(), s));
        QCOMPARE(s.guiche, QStringLiteral("03"));
        QCOMPARE(s.guiche2, QStringLiteral("03"));
        QCOMPARE(s.juros, qint16(2));
        QCOMPARE(s.soma, qint16(1));
        QCOMPARE(s.opcoes_porta, qint16(9));
        QCOMPARE(s.porta, QStringLiteral("COM1"));
        QCOMPARE(s.print_cupom, qint16(5));
        QCOMPARE(s.lineFeed, qint16(4)); // out of the 16-bit range
        QVERIFY(!s.ip.isNull());
        QCOMPARE(s.ip, QString(QLatin1String("")));
        QCOMPARE(s.Path3, QStringLiteral("/x/"));
    }

    void redeConcatenates_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::newRow("1 then 11") << "1" << 1 << 11;
        QTest::newRow("0 then 0") << "0" << 0 << 0;
        QTest::newRow("empty keeps") << "" << 0 << 0;
        QTest::newRow("text keeps") << "sim" << 0 << 0;
    }
    void redeConcatenates() {
        QFETCH(QString, file);
        QFETCH(int, first);
        QFETCH(int, second);
        writeRaw(QStringLiteral("[Export]\r\nrede=%1\r\n").arg(file).toLatin1());
        Settings s;
        Carrega_config(ini(), s);
        QCOMPARE(int(s.rede), first);
        Carrega_config(ini(), s);
        QCOMPARE(int(s.rede), second);
    }

    void redeOneThenZeroGivesTen() {
        writeRaw("[Export]\r\nrede=1\r\n");
        Settings s;
        Carrega_config(ini(), s);
        QVERIFY(IniFile::write(QStringLiteral("Export"), QStringLiteral("rede"),
                               QStringLiteral("0"), ini()));
        Carrega_config(ini(), s);
        QCOMPARE(int(s.rede), 10);
    }

    void missingFileLoadsEmptyAndZero() {
        Settings s;
        QVERIFY(Carrega_config(m_dir.filePath(QStringLiteral("nenhum.ini")), s));
        QVERIFY(s.guiche.isEmpty());
        QCOMPARE(int(s.juros), 0);
        QCOMPARE(int(s.rede), 0);
    }
};

QTEST_GUILESS_MAIN(tst_settings)
#include "tst_settings.moc"
