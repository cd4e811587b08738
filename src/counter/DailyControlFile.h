#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

class AppContext;
class clsMovimento;
struct RecordedReceipt;

// The daily control file "Receb_yyyymmdd.txt" in [Export] Path3: a header when the day is opened,
// then one line per receipt as payments are recorded. ISO-8859-1, CRLF.
class DailyControlFile {
public:
    static QString path(const AppContext& ctx, const QDate& day);
    // Writes the header unless the file is already there (a resumed day keeps its file).
    static bool writeHeader(const AppContext& ctx, const clsMovimento& mov);
    static bool appendReceipts(const AppContext& ctx, const QDate& day,
                               const QList<RecordedReceipt>& rows);
    static QString receiptLine(const RecordedReceipt& r, const QString& hora);

private:
    static bool append(const QString& path, const QStringList& lines);
};
