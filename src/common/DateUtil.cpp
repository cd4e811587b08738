#include "DateUtil.h"

#include <QRegularExpression>

namespace DateUtil {

QString br(const QDate& d) {
    return d.toString(QStringLiteral("dd/MM/yyyy"));
}
QString iso(const QDate& d) {
    return d.toString(QStringLiteral("yyyy-MM-dd"));
}

std::optional<QDate> parseBr(const QString& text) {
    static const QRegularExpression re(QStringLiteral("^(\\d{2})/(\\d{2})/(\\d{4})$"));
    const auto m = re.match(text.trimmed());
    if (!m.hasMatch())
        return std::nullopt;
    const QDate d(m.captured(3).toInt(), m.captured(2).toInt(), m.captured(1).toInt());
    if (!d.isValid())
        return std::nullopt;
    return d;
}

std::optional<QDate> parseIso(const QString& text) {
    static const QRegularExpression re(QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})"));
    const auto m = re.match(text.trimmed());
    if (!m.hasMatch())
        return std::nullopt;
    const QDate d(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    if (!d.isValid())
        return std::nullopt;
    return d;
}

std::optional<QDate> parseAny(const QString& text) {
    if (auto d = parseBr(text))
        return d;
    return parseIso(text);
}

bool isWeekend(const QDate& d) {
    return d.dayOfWeek() >= 6;
}

} // namespace DateUtil
