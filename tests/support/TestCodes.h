#pragma once

#include <QString>

// Barcodes with right check digits, for tests that need receipts of bank slips and guides.
namespace TestCodes {

// A bank slip of bank 001 whose SIGCB free field starts with the five-digit kind, then the
// nosso número in three pieces with the two modality digits between them (positions 27-29,
// 30, 31-33, 34, 35-43).
QString slip(int factor, qint64 cents, const QString& kind5, const QString& nosso15,
             const QString& modal2);

// A Febraban collection guide (value identifier 6: modulo 10) of a four-digit kind, due on
// `yyyymmdd`, with 17 free digits.
QString guide(const QString& kind4, qint64 cents, const QString& yyyymmdd, const QString& free17);

} // namespace TestCodes
