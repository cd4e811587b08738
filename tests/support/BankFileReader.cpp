#include "BankFileReader.h"

#include <QFile>

namespace {
QString z(int n) {
    return QString(n, QLatin1Char('0'));
}
QString b(int n) {
    return QString(n, QLatin1Char(' '));
}
QString num(int value, int width) {
    return QString::number(value).rightJustified(width, QLatin1Char('0'));
}
} // namespace

QString BankFileReader::differences(const QString& record, const QList<Field>& fields, int length) {
    QStringList out;
    if (record.size() != length)
        out << QStringLiteral("length %1 instead of %2").arg(record.size()).arg(length);
    int next = 1;
    for (const Field& f : fields) {
        const int width = f.to - f.from + 1;
        if (f.from != next || f.value.size() != width)
            out << QStringLiteral("table: field %1-%2 (value of %3 characters) after %4")
                       .arg(f.from)
                       .arg(f.to)
                       .arg(f.value.size())
                       .arg(next - 1);
        const QString got = record.mid(f.from - 1, width);
        if (got != f.value)
            out << QStringLiteral("%1-%2: '%3' instead of '%4'")
                       .arg(f.from)
                       .arg(f.to)
                       .arg(got, f.value);
        next = f.to + 1;
    }
    if (next != length + 1)
        out << QStringLiteral("table ends at %1").arg(next - 1);
    return out.join(QStringLiteral("; "));
}

QStringList BankFileReader::records(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = f.readAll();
    if (!bytes.endsWith("\r\n"))
        return {};
    QStringList lines = QString::fromLatin1(bytes).split(QStringLiteral("\r\n"));
    lines.removeLast();
    for (const QString& l : lines)
        if (l.contains(QLatin1Char('\n')) || l.contains(QLatin1Char('\r')))
            return {};
    return lines;
}

QList<BankFileReader::Field> BankFileReader::cnabHeaderArquivo(const Cnab& c) {
    return {{1, 3, c.banco},      {4, 8, z(5)},
            {9, 17, b(9)},        {18, 18, QStringLiteral("2")},
            {19, 32, c.cnpj},     {33, 52, z(20)},
            {53, 57, c.agencia},  {58, 58, c.dv},
            {59, 64, c.convenio}, {65, 72, z(8)},
            {73, 102, c.empresa}, {103, 132, c.nomeBanco},
            {133, 142, b(10)},    {143, 143, QStringLiteral("2")},
            {144, 151, c.data},   {152, 157, c.hora},
            {158, 163, c.nsa},    {164, 171, QStringLiteral("04000000")},
            {172, 191, b(20)},    {192, 207, QStringLiteral("RETORNO-PRODUCAO")},
            {208, 225, b(18)},    {226, 228, QStringLiteral("000")},
            {229, 240, b(12)}};
}

QList<BankFileReader::Field> BankFileReader::cnabHeaderLote(const Cnab& c) {
    return {{1, 3, c.banco},
            {4, 9, QStringLiteral("00011T")},
            {10, 16, QStringLiteral("0100030")},
            {17, 17, b(1)},
            {18, 19, QStringLiteral("20")},
            {20, 33, c.cnpj},
            {34, 53, z(20)},
            {54, 58, c.agencia},
            {59, 59, c.dv},
            {60, 65, c.convenio},
            {66, 73, z(8)},
            {74, 103, c.empresa},
            {104, 183, b(80)},
            {184, 185, z(2)},
            {186, 191, c.nsa},
            {192, 199, c.data},
            {200, 209, z(10)},
            {210, 235, b(26)},
            {236, 237, z(2)},
            {238, 240, b(3)}};
}

QList<BankFileReader::Field> BankFileReader::cnabSegmentoT(const Cnab& c, int registro,
                                                           const Boleto& t) {
    return {{1, 3, c.banco},
            {4, 8, QStringLiteral("00013")},
            {9, 13, num(registro, 5)},
            {14, 15, QStringLiteral("T ")},
            {16, 17, QStringLiteral("06")},
            {18, 23, z(6)},
            {24, 29, c.convenio},
            {30, 36, z(7)},
            {37, 39, b(3)},
            {40, 41, t.modal},
            {42, 56, t.nosso},
            {57, 58, QStringLiteral("01")},
            {59, 73, z(15)},
            {74, 81, t.vencimento},
            {82, 96, t.valorTitulo},
            {97, 99, z(3)},
            {100, 104, c.agencia},
            {105, 120, z(16)},
            {121, 130, b(10)},
            {131, 132, QStringLiteral("09")},
            {133, 148, z(16)},
            {149, 198, b(50)},
            {199, 219, z(21)},
            {220, 240, b(21)}};
}

QList<BankFileReader::Field> BankFileReader::cnabSegmentoU(const Cnab& c, int registro,
                                                           const Boleto& u) {
    return {{1, 3, c.banco},
            {4, 8, QStringLiteral("00013")},
            {9, 13, num(registro, 5)},
            {14, 15, QStringLiteral("U ")},
            {16, 17, QStringLiteral("06")},
            {18, 32, u.juros},
            {33, 77, z(45)},
            {78, 92, u.pago},
            {93, 107, u.pago},
            {108, 137, z(30)},
            {138, 145, c.data},
            {146, 153, c.data},
            {154, 157, z(4)},
            {158, 165, c.data},
            {166, 233, z(68)},
            {234, 240, b(7)}};
}

QList<BankFileReader::Field> BankFileReader::cnabTrailerLote(const Cnab& c, int registrosLote) {
    return {{1, 3, c.banco},  {4, 8, QStringLiteral("00015")},
            {9, 17, b(9)},    {18, 23, num(registrosLote, 6)},
            {24, 115, z(92)}, {116, 240, b(125)}};
}

QList<BankFileReader::Field> BankFileReader::cnabTrailerArquivo(const Cnab& c,
                                                                int registrosArquivo) {
    return {{1, 3, c.banco},
            {4, 8, QStringLiteral("99999")},
            {9, 17, b(9)},
            {18, 23, QStringLiteral("000001")},
            {24, 29, num(registrosArquivo, 6)},
            {30, 240, b(211)}};
}

QList<BankFileReader::Field> BankFileReader::febHeader(const Febraban& f) {
    return {{1, 2, QStringLiteral("A0")},   {3, 42, z(40)},   {43, 45, f.banco},
            {46, 65, f.nomeBanco},          {66, 73, f.data}, {74, 79, f.sequencia},
            {80, 81, QStringLiteral("03")}, {82, 150, b(69)}};
}

QList<BankFileReader::Field> BankFileReader::febDetalhe(const QString& dataPagto,
                                                        const QString& codigo,
                                                        const QString& valor12, int registro) {
    return {{1, 1, QStringLiteral("G")},
            {2, 21, z(20)},
            {22, 29, dataPagto},
            {30, 37, dataPagto},
            {38, 81, codigo},
            {82, 93, valor12},
            {94, 100, z(7)},
            {101, 108, num(registro, 8)},
            {109, 116, b(8)},
            {117, 117, QStringLiteral("4")},
            {118, 140, b(23)},
            {141, 141, QStringLiteral("1")},
            {142, 150, b(9)}};
}

QList<BankFileReader::Field> BankFileReader::febTrailer(int registros, const QString& total17) {
    return {{1, 1, QStringLiteral("Z")},
            {2, 7, num(registros, 6)},
            {8, 24, total17},
            {25, 150, b(126)}};
}
