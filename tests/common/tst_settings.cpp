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
        for (const auto& [name, section, key, expected] :
             {std::tuple{"exact", "Export", "guiche", "7"},
              {"case of both", "EXPORT", "GUICHE", "7"},
              {"blanks trimmed", "Mensagem", "pref", "PREFEITURA DE AÇAÍ"},
              {"empty value", "Export", "rede", ""},
              {"missing key", "Export", "nada", ""},
              {"missing section", "Nada", "guiche", ""},
              {"key of another section", "Mensagem", "guiche", ""},
              {"comment is not a key", "Print", ";modo", ""}})
            QTest::newRow(name) << QString::fromUtf8(section) << QString::fromUtf8(key)
                                << QString::fromUtf8(expected);
    }
    void readMatchesWithoutCase() {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, expected);
        writeRaw(QByteArray("[export]\r\nGuiche = 7 \r\nrede=\r\n[Mensagem]\r\npref=  ") +
                 QStringLiteral("PREFEITURA DE AÇAÍ").toLatin1() + "\r\n[Print]\r\n;modo=1\r\n");
        QCOMPARE(IniFile::read(section, key, ini()), expected);
        // A missing file reads as empty text.
        QCOMPARE(IniFile::read(section, key, m_dir.filePath(QStringLiteral("nao-existe.ini"))),
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

    // The second load appends the file's digits to the value kept from the first.
    void redeConcatenates_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("fileLater");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::newRow("1 then 11") << "1"
                                   << "1" << 1 << 11;
        QTest::newRow("1 then 0 gives 10") << "1"
                                           << "0" << 1 << 10;
        QTest::newRow("0 then 0") << "0"
                                  << "0" << 0 << 0;
        QTest::newRow("empty keeps") << ""
                                     << "" << 0 << 0;
        QTest::newRow("text keeps") << "sim"
                                    << "sim" << 0 << 0;
    }
    void redeConcatenates() {
        QFETCH(QString, file);
        QFETCH(QString, fileLater);
        QFETCH(int, first);
        QFETCH(int, second);
        writeRaw(QStringLiteral("[Export]\r\nrede=%1\r\n").arg(file).toLatin1());
        Settings s;
        Carrega_config(ini(), s);
        QCOMPARE(int(s.rede), first);
        writeRaw(QStringLiteral("[Export]\r\nrede=%1\r\n").arg(fileLater).toLatin1());
        Carrega_config(ini(), s);
        QCOMPARE(int(s.rede), second);
    }
};

QTEST_GUILESS_MAIN(tst_settings)
#include "tst_settings.moc"
