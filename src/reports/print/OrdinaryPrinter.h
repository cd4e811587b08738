#pragma once

#include <QString>

class AppContext;
class QPrinter;
class QTextDocument;

// The ordinary printer ([Print] impressora_padrao, chosen in Opções): coupons and reports go to
// it by name; with none chosen, to the system's default; with no printer installed (or the
// chosen one gone) they are saved as PDF in a folder of the program's own, and the caller is
// told where.
class OrdinaryPrinter {
public:
    enum class Pasta { Cupons, Relatorios };
    static QString pasta(const AppContext& ctx, Pasta p);
    // The printer that printing uses now; empty when there is none.
    static QString impressora(const AppContext& ctx);

    struct Destino {
        QString impressora; // printed here, or
        QString pdf;        // saved here
    };
    // Points `printer` at the printer, or at a new PDF named after `nome` and the moment.
    static Destino preparar(AppContext& ctx, QPrinter& printer, Pasta p, const QString& nome);

    struct Resultado {
        bool ok = false;
        Destino destino;
        QString problema;
    };
    static Resultado imprimir(AppContext& ctx, QTextDocument& doc, const QString& nome);
    // What the operator is told after printing.
    static QString aviso(const Resultado& r);
};
