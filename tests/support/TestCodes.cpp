#include "TestCodes.h"

#include "CheckDigits.h"

QString TestCodes::slip(int factor, qint64 cents, const QString& kind5, const QString& nosso15,
                        const QString& modal2) {
    const QString free = kind5 + QStringLiteral("00") + nosso15.mid(0, 3) + modal2.mid(0, 1) +
                         nosso15.mid(3, 3) + modal2.mid(1, 1) + nosso15.mid(6, 9) +
                         QStringLiteral("0");
    const QString body = QStringLiteral("0019") +
                         QString::number(factor).rightJustified(4, QLatin1Char('0')) +
                         QString::number(cents).rightJustified(10, QLatin1Char('0')) + free;
    return body.left(4) + QString::number(Modulo11_boleto(body)) + body.mid(4);
}

QString TestCodes::guide(const QString& kind4, qint64 cents, const QString& yyyymmdd,
                         const QString& free17) {
    const QString rest =
        QString::number(cents).rightJustified(11, QLatin1Char('0')) + kind4 + yyyymmdd + free17;
    return QStringLiteral("816") + Modulo10_arrecadacao(QStringLiteral("816") + rest) + rest;
}
