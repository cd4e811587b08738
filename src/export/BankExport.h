#pragma once

#include "Money.h"
#include "Notice.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class AppContext;
class BankFileWriter;
class clsCodBarra;
class clsRecebimentos;

// What the two bank-file runs (CNAB 240 return file and Febraban 150 file) share: what they are
// asked, what they answer, and the rules of their settings, folders and records.
class BankExport {
public:
    enum class Arquivo { Cnab, Febraban };

    struct Request {
        qint32 idMovimento = 0;
        QDate movimento;  // the movement's date: file date, payment date, due-factor cycle
        int idcod = 0;    // the kind (CodBarra.IDCOD) of the receipts
        QString codBanco; // Febraban: the bank code typed by the operator
        int pausaMs = 0;  // pause between receipts: the screen's setting; commands never pause
        std::function<void(int feitos, int total)> progresso;
    };

    struct Result {
        bool ok = false;
        QString arquivo;      // the file's final name, known as soon as the run starts
        int registros = 0;    // records this run wrote
        Money total;          // sum of the receipts written
        QStringList erros;    // each failing record's message once, then any file error
        int falhas = 0;       // records that could not be built
        int nsa = 0;          // CNAB: the file's sequence number
        QList<Notice> avisos; // what the operator is told, in order, once the run is over

        void mostrar(DialogPort& dialogs) const {
            for (const Notice& n : avisos)
                tell(dialogs, n);
        }
    };

    static QString padrao(Arquivo a); // the kinds' PADRAO: "C" or "F"

    // The bank code of the Febraban file: exactly three digits.
    // The one bank-code rule of the screen and the command: a Febraban run writes the code the
    // operator typed, which must be three digits; a CNAB run writes [Export] cod_banco_cnab,
    // which its header record checks, so a typed code is not asked of it. The refusal
    // ("Código do banco não informado!!"), or empty.
    static QString recusaCodigoBanco(Arquivo a, const QString& digitado);
    static bool codigoBancoValido(const QString& codigo);

    // The screen's settings: [Export] pausa_registro in ms (800 when missing; 0 turns it off)
    // and [Export] cnab=1, which lets the screen's export button write the CNAB file.
    static int pausaTela(const AppContext& ctx);
    static bool cnabNaTela(const AppContext& ctx);
    static constexpr int kPausaPadrao = 800;

    // --- pieces of the runs ---

    // The kind of the request, which must belong to the file's standard; else a message.
    static bool tipo(int idcod, Arquivo a, clsCodBarra& kind, Result& r);
    // The configured folder (relative to the program's folder; empty = the program's folder).
    // A folder that does not exist is refused with a message naming the key.
    static std::optional<QString> pasta(AppContext& ctx, const QString& configured,
                                        const QString& key, Result& r);
    // Starts the file and reads the receipts the request will write; a failure is kept in the
    // result.
    static std::optional<QList<clsRecebimentos>> inicia(AppContext& ctx, const Request& rq,
                                                        BankFileWriter& file, Result& r);
    // A piece of text for a file name: characters no file name may hold become '_'.
    static QString parteDoNome(const QString& text);
    // Cut to `width` or filled with blanks to it.
    static QString ajusta(const QString& text, int width);
    static QString numero(qint64 n, int width); // zero-filled
    // The first 44 characters are a readable code: 44 digits, and not an item without barcode.
    static bool codigoValido(const QString& codbarra);

    // A record built (appended with its CRLF) or not. The message of a failing kind of record
    // is kept once per run (a wrong setting fails every receipt's record alike), to be told
    // after the run; the run goes on and will write nothing.
    static void registro(Result& r, bool built, const QString& record, const QString& failure,
                         QByteArray& into);
    // Whether a file name is recorded as a run (a name never used twice), for BankFileWriter.
    static std::function<bool(const QString&)> registrado(AppContext& ctx);
    // The end of a good run, in one transaction: the sequence number taken (CNAB: `numera`
    // gets it and answers the file's bytes; Febraban gets 0), the file written whole and
    // flushed, the run and its receipts recorded, the commit; then the file gets its name. A
    // failure anywhere leaves no file and no number used; it is kept, to be told after the run.
    static bool conclui(AppContext& ctx, const Request& rq, Arquivo a, const QString& banco,
                        BankFileWriter& file, const QList<clsRecebimentos>& rows,
                        const std::function<std::optional<QList<QByteArray>>(int nsa)>& numera,
                        Result& r);
    // A failure that ends the run: kept in the result, to be told after the run.
    static void falha(Result& r, const QString& text);
    static void pausa(int ms); // keeps the screen alive while it waits
};
