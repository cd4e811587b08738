#pragma once

#include <QByteArray>
#include <QString>

// Text for the printer in its code page. Qt has no CP850 codec, so the table lives here.
// Characters the page lacks become '?'.
class Cp850 {
public:
    static QByteArray encode(const QString& text);
    static QString decode(const QByteArray& bytes);
    // "cp850" (default) or "latin1" ([Print] pagina_codigo).
    static QByteArray encodeFor(const QString& codePage, const QString& text);
};
