#pragma once

#include <QList>
#include <QString>

// The symbology of the barcodes on guides and bank slips (Interleaved 2 of 5): digits in pairs,
// the first of each pair drawn in five bars and the second in the five spaces between them, two
// of the five wide. A start pattern (narrow bar, space, bar, space) and a stop pattern (wide bar,
// narrow space, narrow bar) frame the pairs; the drawing leaves the quiet zones around them.
class Interleaved2of5 {
public:
    // Widths of the elements in narrow modules, from the first bar, bars and spaces
    // alternating. Empty unless the text is an even, non-zero number of ASCII digits.
    static QList<int> elements(const QString& digits, int wide = 3);
    // The total width in narrow modules, quiet zones not included.
    static int modules(const QList<int>& elements);
};
