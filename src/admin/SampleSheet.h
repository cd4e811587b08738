#pragma once

#include <QDate>
#include <QList>
#include <QString>

// A sheet of sample guides to scan on the first day: one for each path a cashier meets, built
// for the kinds of guide the demonstration data records (DemoData) and dated from the day it is
// written. It comes as a PDF with real barcodes (read from paper or from the screen) and as a
// text file with the same codes and typed lines.
class SampleSheet {
public:
    struct Guide {
        QString titulo;
        QString explicacao; // what the counter does with it
        QString codigo;     // 44 digits
        QString linha;      // the typed line of the code
        bool barras = true; // false: only the typed line is printed, to be typed
    };
    static QList<Guide> guides(const QDate& today);

    static const QString kPdf; // guias-de-exemplo.pdf
    static const QString kTxt; // guias-de-exemplo.txt

    struct Written {
        QString pdf; // the sheet's path in the folder
        QString txt;
        bool created = false; // false when both were already there (never replaced)
        QString error;        // empty when both files are in place
        bool ok() const { return error.isEmpty(); }
    };
    // Writes the files that are missing; files already there are left as they are. The PDF is
    // painted with Qt's painter, so a QGuiApplication must exist.
    static Written write(const QString& folder, const QDate& today);
    // "Folha de guias de exemplo para ler: <pdf> (os mesmos códigos em <txt>)."
    static QString where(const Written& w);
};
