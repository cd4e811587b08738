// Typed lines on bytes and on text, the fixed-field check digits against the general ones, and
// the batch that answers a stream of lines.
#include "CheckDigits.h"
#include "TypedLine.h"
#include "TypedLineBatch.h"

#include <QRandomGenerator>
#include <QTest>
#include <cstdio>

using Reason = TypedLine::Reason;
Q_DECLARE_METATYPE(TypedLine::Reason)

namespace {

struct Valid {
    const char* name;
    const char* line;
    const char* barcode;
};

// Lines printed on slips of several banks and on bills of several segments, both modulos.
constexpr Valid kValid[] = {
    {"cef", "10492006506100010004200997263900989810000021403",
     "10499898100000214032006561000100040099726390"},
    {"bradesco", "23793381286000596334721000063301174640000116037",
     "23791746400001160373381260005963342100006330"},
    {"banco do brasil", "00190500954014481606906809350314337370000000100",
     "00193373700000001000500940144816060680935031"},
    {"sicoob", "75691303670103467211159238450015997710000096210",
     "75699977100000962101303601034672115923845001"},
    {"city hall, modulo 10", "816600000037124004262026611305888889888888888888",
     "81660000003124004262026113058888888888888888"},
    {"city hall, modulo 11", "818300000123345604272021601100000009000000000000",
     "81830000012345604272026011000000000000000000"},
    {"city hall, identifier 9", "819700000013000012342025612310000000000000000779",
     "81970000001000012342026123100000000000000077"},
    {"utility", "836400000011331201380002812884627116080136181551",
     "83640000001331201380008128846271108013618155"},
    {"telecom", "846300000003299902962024004101360008002006441147",
     "84630000000299902962020041013600000200644114"},
    {"traffic fines, modulo 11", "877700000012595001234565789012345672890123456786",
     "87770000001595001234567890123456789012345678"},
    {"bank use, modulo 11", "896200000009150000999006000000000000000000123455",
     "89620000000150000999000000000000000000012345"},
};

QString other(QChar d) {
    return QString(QChar('0' + (d.digitValue() + 3) % 10));
}

QByteArray answerAll(const QByteArray& input, int piece, qint64* refused) {
    QByteArray out;
    TypedLineBatch batch([&out](std::string_view b) { out.append(b.data(), qsizetype(b.size())); });
    for (qsizetype at = 0; at < input.size(); at += piece)
        batch.feed({input.constData() + at, size_t(qMin<qsizetype>(piece, input.size() - at))});
    batch.finish();
    *refused = batch.refused();
    return out;
}

QByteArray answerLine(Reason r, const char* barcode = nullptr) {
    return r == Reason::Ok ? QByteArray(barcode) + '\n' : TypedLine::message(r).toUtf8() + '\n';
}

} // namespace

class tst_typedline : public QObject {
    Q_OBJECT
private slots:
    void lines_data() {
        QTest::addColumn<QString>("line");
        QTest::addColumn<Reason>("reason");
        QTest::addColumn<QString>("barcode");
        for (const Valid& v : kValid) {
            QTest::newRow(v.name) << v.line << Reason::Ok << v.barcode;
            // Every check digit replaced by another is caught, and named.
            const QString line = QString::fromLatin1(v.line);
            const bool slip = line.size() == 47;
            const QList<int> positions =
                slip ? QList<int>{9, 20, 31, 32} : QList<int>{11, 23, 35, 47, 3};
            const QList<Reason> reasons =
                slip ? QList<Reason>{Reason::Field1, Reason::Field2, Reason::Field3,
                                     Reason::GeneralDigit}
                     : QList<Reason>{Reason::Field1, Reason::Field2, Reason::Field3, Reason::Field4,
                                     Reason::Field1};
            for (int i = 0; i < positions.size(); ++i)
                QTest::addRow("%s, digit at %d", v.name, positions[i])
                    << QString(line).replace(positions[i], 1, other(line[positions[i]]))
                    << reasons[i] << QString();
        }
        // The general digit alone wrong, each block's digit right.
        QTest::newRow("collection general, modulo 10")
            << "836900000016 331201380002 812884627116 080136181551" << Reason::GeneralDigit
            << QString();
        QTest::newRow("collection general, modulo 11")
            << "818500000127345604272021601100000009000000000000" << Reason::GeneralDigit
            << QString();
        QTest::newRow("not from 8") << "736400000011331201380002812884627116080136181551"
                                    << Reason::NotCollection << QString();
        QTest::newRow("not from 8, printed")
            << "93640000001-1 33120138000-2 81288462711-6 08013618155-1" << Reason::NotCollection
            << QString();
        // Segments 0 and 8 are refused even with every digit right.
        QTest::newRow("segment 0")
            << "806800000010000012342028612310000007000000000778" << Reason::Segment0 << QString();
        QTest::newRow("segment 8")
            << "888000000013000012342025612310000000000000000779" << Reason::Segment8 << QString();
        QTest::newRow("identifier 2, modulo 10")
            << "812600000010000012342028612310000007000000000778" << Reason::Ok
            << "81260000001000012342026123100000000000000077";
        // Public lines of other layouts: no due factor, zero value and factor, more segments.
        QTest::newRow("bradesco card, no factor")
            << "23794150099001980167035000211405700000000000000" << Reason::Ok
            << "23797000000000000004150090019801673500021140";
        QTest::newRow("factor and value zero")
            << "73990.00004 00001.223320 90126.130344 4 00000000000000" << Reason::Ok
            << "73994000000000000000000000001223329012613034";
        QTest::newRow("energy") << "838600000050096000190009000801782309000343062712" << Reason::Ok
                                << "83860000005096000190000008017823000034306271";
        QTest::newRow("sanitation") << "858200000007572503282030560708202107539591904460"
                                    << Reason::Ok << "85820000000572503282035607082021053959190446";
        QTest::newRow("itau sample, general digit")
            << "34191.75124 34567.871230 41234.560005 8 92850000026035" << Reason::GeneralDigit
            << QString();
        QTest::newRow("slip value changed") << "00191234540000000000000000000000316510000008916"
                                            << Reason::GeneralDigit << QString();
        QTest::newRow("printed slip")
            << "23793.38128 60005.963347 21000.063301 1 74640000116037" << Reason::Ok
            << "23791746400001160373381260005963342100006330";
        QTest::newRow("dashes, tabs, CR")
            << "\t83640000001-1\t33120138000-2 81288462711-6 08013618155-1\r" << Reason::Ok
            << "83640000001331201380008128846271108013618155";
        QTest::newRow("long with blanks")
            << "  8 3 6 4 0 0 0 0 0 0 1 1 3 3 1 2 0 1 3 8 0 0 0 2 8 1 2 8 8 4 6 2 7 1 1 6 0 8 0 1 "
               "3 6 1 8 1 5 5 1  "
            << Reason::Ok << "83640000001331201380008128846271108013618155";
        QTest::newRow("unicode blanks")
            << QString::fromUtf8("\u00a083640000001 1 33120138000 2 "
                                 "81288462711 6 08013618155 1\u2003")
            << Reason::Ok << "83640000001331201380008128846271108013618155";
        QTest::newRow("slash") << "23793/38128 60005.963347 21000.063301 1 74640000116037"
                               << Reason::NotALine << QString();
        QTest::newRow("letter") << "2379338128600059633472100006330117464000011603A"
                                << Reason::NotALine << QString();
        QTest::newRow("accented letter") << QString::fromUtf8("2379338128600059633472100006330117"
                                                              "464000011603\u00e9")
                                         << Reason::NotALine << QString();
        QTest::newRow("nul") << QString::fromLatin1("23793381286000596334721000063301\0"
                                                    "174640000116037",
                                                    48)
                             << Reason::NotALine << QString();
        QTest::newRow("46 digits")
            << "2379338128600059633472100006330117464000011603" << Reason::NotALine << QString();
        QTest::newRow("49 digits")
            << "8364000000113312013800028128846271160801361815510" << Reason::NotALine << QString();
        QTest::newRow("a barcode")
            << "83640000001331201380008128846271108013618155" << Reason::NotALine << QString();
        QTest::newRow("80 digits")
            << QString(80, QLatin1Char('8')) << Reason::NotALine << QString();
        QTest::newRow("empty") << "" << Reason::NotALine << QString();
        QTest::newRow("blanks") << " \t\r " << Reason::NotALine << QString();
    }
    void lines() {
        QFETCH(QString, line);
        QFETCH(Reason, reason);
        QFETCH(QString, barcode);
        const TypedLine::Result r = TypedLine::toBarcode(line);
        QCOMPARE(r.reason, reason);
        QCOMPARE(r.barcode, barcode);
        QCOMPARE(r.campo, TypedLine::campo(reason));
        QCOMPARE(r.erro, TypedLine::message(reason));
        // The bytes of an ASCII line give the same answer without the text routine.
        bool ascii = true;
        for (QChar c : line)
            ascii = ascii && c.unicode() < 0x80;
        if (ascii) {
            const QByteArray bytes = line.toLatin1();
            char out[44];
            QCOMPARE(
                TypedLine::decode(std::string_view(bytes.constData(), size_t(bytes.size())), out),
                reason);
            if (reason == Reason::Ok)
                QCOMPARE(QString::fromLatin1(out, 44), barcode);
        }
    }

    void messages_data() {
        QTest::addColumn<Reason>("reason");
        QTest::addColumn<int>("campo");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, Reason r, int campo, const char* message) {
            QTest::newRow(name) << r << campo << QString::fromUtf8(message);
        };
        row("length", Reason::NotALine, -1,
            "A linha digitável deve ter 47 (boleto) ou 48 (arrecadação) números.");
        row("start", Reason::NotCollection, -1,
            "A linha digitável de 48 números é de arrecadação e começa com 8.");
        row("segment 0", Reason::Segment0, -1,
            "O segmento 0 (segundo número da linha digitável) não existe na arrecadação.");
        row("segment 8", Reason::Segment8, -1,
            "O segmento 8 (segundo número da linha digitável) não existe na arrecadação.");
        row("general", Reason::GeneralDigit, 0,
            "O dígito verificador geral da linha digitável não confere.");
        row("field 4", Reason::Field4, 4,
            "O dígito verificador do campo 4 da linha digitável não confere.");
    }
    void messages() {
        QFETCH(Reason, reason);
        QFETCH(int, campo);
        QFETCH(QString, message);
        QCOMPARE(TypedLine::campo(reason), campo);
        QCOMPARE(TypedLine::message(reason), message);
    }

    // The fixed fields are summed eight digits at a time; any digits give what the general
    // routines give, the largest sums included.
    void fixedFieldsMatchTheGeneralRoutines() {
        QRandomGenerator rng(20261123);
        auto check = [](const QByteArray& d) {
            const std::string_view v(d.constData(), size_t(d.size()));
            const char* p = d.constData();
            switch (d.size()) {
            case 9:
                QCOMPARE(CheckDigits::modulo10<9>(p), CheckDigits::modulo10(v));
                break;
            case 10:
                QCOMPARE(CheckDigits::modulo10<10>(p), CheckDigits::modulo10(v));
                break;
            case 11:
                QCOMPARE(CheckDigits::modulo10<11>(p), CheckDigits::modulo10(v));
                QCOMPARE(CheckDigits::modulo11Collection<11>(p),
                         CheckDigits::modulo11Collection(v));
                break;
            default:
                QCOMPARE(CheckDigits::modulo10<43>(p), CheckDigits::modulo10(v));
                QCOMPARE(CheckDigits::modulo11Collection<43>(p),
                         CheckDigits::modulo11Collection(v));
                QCOMPARE(CheckDigits::modulo11Slip<43>(p), CheckDigits::modulo11Slip(v));
                QCOMPARE(CheckDigits::modulo11Slip<43>(p), Modulo11_boleto(QString::fromLatin1(d)));
            }
            QCOMPARE(QString::number(CheckDigits::modulo10(v)),
                     Modulo10_arrecadacao(QString::fromLatin1(d)));
        };
        for (int size : {9, 10, 11, 43}) {
            for (char c = '0'; c <= '9'; ++c)
                check(QByteArray(size, c));
            for (int i = 0; i < 3000; ++i) {
                QByteArray d(size, '0');
                for (char& c : d)
                    c = char('0' + rng.bounded(10));
                check(d);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    // Any barcode gives a line that gives it back.
    void roundTrip() {
        QRandomGenerator rng(7);
        for (int i = 0; i < 2000; ++i) {
            QString b;
            for (int k = 0; k < 44; ++k)
                b += QChar('0' + rng.bounded(10));
            const bool slip = i % 2 == 0;
            if (slip) {
                b[0] = QLatin1Char('3');
                b[4] = QChar('0' + Modulo11_boleto(b.left(4) + b.mid(5)));
            } else {
                b[0] = QLatin1Char('8');
                b[1] = QChar("12345679"[rng.bounded(8)]);
                const QString body = b.left(3) + b.mid(4);
                b[3] = (b[2] < QLatin1Char('8') ? Modulo10_arrecadacao(body)
                                                : Modulo11_arrecadacao(body))[0];
            }
            const QString line = TypedLine::fromBarcode(b);
            QCOMPARE(line.size(), slip ? 47 : 48);
            QCOMPARE(TypedLine::toBarcode(line).barcode, b);
        }
    }

    void batch_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<int>("refused");
        const QByteArray cef = kValid[0].line;
        const QByteArray utility = kValid[7].line;
        const QByteArray cefCode = QByteArray(kValid[0].barcode) + '\n';
        const QByteArray utilityCode = QByteArray(kValid[7].barcode) + '\n';
        QTest::newRow("empty") << QByteArray() << QByteArray() << 0;
        QTest::newRow("crlf") << cef + "\r\n" + utility + "\r\n" << cefCode + utilityCode << 0;
        QTest::newRow("blank lines")
            << "\n" + cef + "\n\r\n   \n"
            << answerLine(Reason::NotALine) + cefCode + answerLine(Reason::NotALine) +
                   answerLine(Reason::NotALine)
            << 3;
        QTest::newRow("last line without its end")
            << cef + "\n" + utility << cefCode + utilityCode << 0;
        QTest::newRow("mixed") << "123\n" + utility +
                                      "\n806800000010000012342028612310000007000"
                                      "000000778\n"
                               << answerLine(Reason::NotALine) + utilityCode +
                                      answerLine(Reason::Segment0)
                               << 2;
        QTest::newRow("utf-8 blanks") << "\xc2\xa0" + utility + "\xe2\x80\x83\n"
                                      << utilityCode << 0;
        QTest::newRow("not utf-8") << "\xa0" + utility + "\n" << answerLine(Reason::NotALine) << 1;
        QTest::newRow("long line") << QByteArray(200, ' ') + cef + QByteArray(100, '.') + "\n"
                                   << cefCode << 0;
    }
    void batch() {
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, output);
        QFETCH(int, refused);
        // However the input is cut, the answers are the same.
        for (int piece : {1, 2, 7, 64, 1 << 20}) {
            qint64 n = -1;
            QCOMPARE(answerAll(input, piece, &n), output);
            QCOMPARE(n, qint64(refused));
        }
    }

    // Through files, past the size of one read, in order.
    void run() {
        QByteArray input;
        QByteArray expected;
        for (int i = 0; i < 60000; ++i) {
            const Valid& v = kValid[size_t(i) % std::size(kValid)];
            const bool broken = i % 7 == 0;
            input += (broken ? QByteArray(v.line).left(40) : QByteArray(v.line)) +
                     (i % 3 ? "\n" : "\r\n");
            expected += broken ? answerLine(Reason::NotALine) : answerLine(Reason::Ok, v.barcode);
        }
        std::FILE* in = std::tmpfile();
        std::FILE* out = std::tmpfile();
        QVERIFY(in && out);
        std::fwrite(input.constData(), 1, size_t(input.size()), in);
        std::rewind(in);
        QCOMPARE(TypedLineBatch::run(in, out), qint64((60000 + 6) / 7));
        std::rewind(out);
        QByteArray written(expected.size() + 1, '\0');
        written.resize(qsizetype(std::fread(written.data(), 1, size_t(written.size()), out)));
        std::fclose(in);
        std::fclose(out);
        QCOMPARE(written.size(), expected.size());
        QVERIFY(written == expected);
    }
};

QTEST_GUILESS_MAIN(tst_typedline)
#include "tst_typedline.moc"
