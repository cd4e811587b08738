#pragma once

#include <QDate>
#include <QString>
#include <optional>

// Date texts used across the program: "dd/MM/yyyy" on screen, ISO in the database.
namespace DateUtil {

QString br(const QDate& d);                         // "dd/MM/yyyy"
QString iso(const QDate& d);                        // "yyyy-MM-dd"
std::optional<QDate> parseBr(const QString& text);  // strict "dd/MM/yyyy", valid dates only
std::optional<QDate> parseIso(const QString& text); // "yyyy-MM-dd"
std::optional<QDate> parseAny(const QString& text); // either form
bool isWeekend(const QDate& d);

} // namespace DateUtil
