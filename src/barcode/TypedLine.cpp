#include "TypedLine.h"

#include "CheckDigits.h"

namespace {

QString collectionBlockDigit(const QString& block, QChar valueId) {
    return valueId.digitValue() < 8 ? Modulo10_arrecadacao(block) : Modulo11_arrecadacao(block);
}

TypedLine::Result fail(int campo) {
    return {QString(), campo, TypedLine::fieldMessage(campo)};
}

// 47 digits: three fields with a modulo 10 digit each, the general digit, factor and value.
TypedLine::Result bankSlip(const QString& l) {
    const QString fields[3] = {l.mid(0, 9), l.mid(10, 10), l.mid(21, 10)};
    const int digits[3] = {l[9].digitValue(), l[20].digitValue(), l[31].digitValue()};
    for (int i = 0; i < 3; ++i)
        if (Modulo10_campo(fields[i]) != digits[i])
            return fail(i + 1);
    const QString barcode =
        l.mid(0, 4) + l.mid(32, 1) + l.mid(33, 14) + l.mid(4, 5) + l.mid(10, 10) + l.mid(21, 10);
    if (Modulo11_boleto(barcode.left(4) + barcode.mid(5)) != barcode[4].digitValue())
        return fail(0);
    return {barcode, 0, QString()};
}

// 48 digits: four blocks of eleven digits, each with its check digit.
TypedLine::Result collection(const QString& l) {
    const QChar valueId = l[2];
    QString barcode;
    for (int i = 0; i < 4; ++i) {
        const QString block = l.mid(i * 12, 11);
        if (collectionBlockDigit(block, valueId) != l.mid(i * 12 + 11, 1))
            return fail(i + 1);
        barcode += block;
    }
    const QString body = barcode.left(3) + barcode.mid(4);
    const QString general =
        valueId.digitValue() < 8 ? Modulo10_arrecadacao(body) : Modulo11_arrecadacao(body);
    if (general != barcode.mid(3, 1))
        return fail(0);
    return {barcode, 0, QString()};
}

} // namespace

QString TypedLine::fieldMessage(int campo) {
    if (campo < 0)
        return QStringLiteral(
            "A linha digitável deve ter 47 (boleto) ou 48 (arrecadação) números.");
    if (campo == 0)
        return QStringLiteral("O dígito verificador geral da linha digitável não confere.");
    return QStringLiteral("O dígito verificador do campo %1 da linha digitável não confere.")
        .arg(campo);
}

TypedLine::Result TypedLine::toBarcode(const QString& line) {
    QString digits;
    for (QChar c : line) {
        if (c == QLatin1Char('.') || c == QLatin1Char('-') || c.isSpace())
            continue;
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return fail(-1);
        digits += c;
    }
    if (digits.size() == 47)
        return bankSlip(digits);
    if (digits.size() == 48)
        return collection(digits);
    return fail(-1);
}

QString TypedLine::fromBarcode(const QString& b) {
    if (b.size() != 44 || !isAllDigits(b))
        return {};
    if (b.startsWith(QLatin1Char('8'))) {
        QString line;
        for (int i = 0; i < 4; ++i) {
            const QString block = b.mid(i * 11, 11);
            line += block + collectionBlockDigit(block, b[2]);
        }
        return line;
    }
    const QString f1 = b.mid(0, 4) + b.mid(19, 5);
    const QString f2 = b.mid(24, 10);
    const QString f3 = b.mid(34, 10);
    return f1 + QString::number(Modulo10_campo(f1)) + f2 + QString::number(Modulo10_campo(f2)) +
           f3 + QString::number(Modulo10_campo(f3)) + b.mid(4, 1) + b.mid(5, 14);
}
