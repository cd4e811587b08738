#pragma once

#include <QByteArray>

// Every byte sequence the driver sends or reads, in one place, so a capture of a real printer
// can correct them without touching the logic.
namespace PrinterBytes {

// First model (ESC/Bema family).
inline const QByteArray kEscBemaMode("\x1D\xF9\x20\x00", 4); // newer units speak ESC/POS too
inline const QByteArray kInit("\x1B\x40", 2);                // ESC @
inline const QByteArray kEnq("\x05", 1);                     // status: one byte back
inline const QByteArray kBoldOn("\x1B\x45", 2), kBoldOff("\x1B\x46", 2);
inline const QByteArray kExpandedOn("\x1B\x57\x01", 3), kExpandedOff("\x1B\x57\x00", 3);
inline const QByteArray kUnderlineOn("\x1B\x2D\x01", 3), kUnderlineOff("\x1B\x2D\x00", 3);
inline const QByteArray kItalicOn("\x1B\x34", 2), kItalicOff("\x1B\x35", 2);
inline const QByteArray kCondensedOn("\x0F", 1), kCondensedOff("\x1B\x48", 2);
inline const QByteArray kDocumentOn("\x1B\x61\x01", 3), kDocumentOff("\x1B\x61\x00", 3);
inline const QByteArray kAfterStamp("\x1B\x7E\x00", 3); // sent after every authentication
inline const QByteArray kCrLf("\r\n", 2);

// Bits of the ENQ answer.
constexpr int kCommandDone = 0x01;
constexpr int kNearEnd = 0x02;
constexpr int kHeadUp = 0x04;
constexpr int kOnline = 0x08;
constexpr int kPaperOut = 0x20;
constexpr int kDocument = 0x40; // document in the slot (authenticating model)

// Second model: authentication mode and stamp. Its status query and the stamp's terminator are
// not published; they come from [Print] quattro_estado and quattro_fim with these defaults.
inline const QByteArray kQuattroAuthOn("\x1B\x7E\x31", 3);  // ESC ~ 1
inline const QByteArray kQuattroAuthOff("\x1B\x7E\x30", 3); // ESC ~ 0
inline const QByteArray kQuattroStamp("\x1B\x56", 2);       // ESC V + text
inline const QByteArray kQuattroStatusDefault("\x1B\x76", 2);
inline const QByteArray kQuattroEndDefault; // the stamp carries nothing after its text
constexpr int kQuattroDocument = 0x10;      // bit 4 of Estado

// Parallel status lines (Linux LPGETSTATUS): select = on line, paper out, error (active low).
constexpr int kLineSelect = 0x10;
constexpr int kLinePaperOut = 0x20;
constexpr int kLineNoError = 0x08;

QByteArray fromHex(const QString& text, const QByteArray& fallback);

} // namespace PrinterBytes
