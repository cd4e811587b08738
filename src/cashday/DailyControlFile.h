#pragma once

#include "Money.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

class AppContext;
class clsMovimento;

// The daily control file "Receb_yyyymmdd.txt" in [Export] Path3: a header when the day is
// opened, then one line per receipt as payments are recorded, when the coupon option
// ([Print] print_cupom) is on; with it off the file keeps only its header. ISO-8859-1, CRLF.
//
// The database is the truth: the file is rebuilt from the movement's receipts (missing lines
// added, a torn last line completed, the header written again if it was lost) when a day is
// opened, resumed or closed, and by `tolvane controle`.
class DailyControlFile {
public:
    // What one receipt puts on its line.
    struct Receipt {
        int autentica = 0;
        QDateTime momento; // when it was recorded
        QString kindColumn;
        Money valor;
        QString codbarra;
    };

    static QString path(const AppContext& ctx, const QDate& day);
    // The payment's lines, when the coupon option is on. A file whose last line was torn (a
    // full disk, a crash) is rebuilt instead of appended to.
    static bool appendReceipts(AppContext& ctx, const QDate& day, const QList<Receipt>& rows);
    static bool rebuild(AppContext& ctx, const clsMovimento& mov);

    static QString receiptLine(int autentica, const QString& hora, const QString& kindColumn,
                               Money valor, const QString& codbarra);

private:
    static QStringList header(const AppContext& ctx, const clsMovimento& mov);
    static bool write(AppContext& ctx, const QString& path, const QStringList& lines, bool whole);
};
