#include "PrinterBytes.h"

#include <QString>
#include <QStringList>

QByteArray PrinterBytes::fromHex(const QString& text, const QByteArray& fallback) {
    QByteArray out;
    for (const QString& part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        bool ok = false;
        const int b = part.toInt(&ok, 16);
        if (!ok || b < 0 || b > 255)
            return fallback;
        out += char(b);
    }
    return out.isEmpty() ? fallback : out;
}
