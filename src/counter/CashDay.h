#pragma once

#include "clsMovimento.h"

class AppContext;
class CounterPrinter;

// The cash day of the working date: opening (or resuming), closing and reopening.
class CashDay {
public:
    enum class Result { Done, Cancelled, Failed };

    CashDay(AppContext& ctx, CounterPrinter* printer);

    // Opens the working date's movement, or resumes the one it already has.
    bool abrir();
    // Loads the working date's movement without opening one.
    bool consultar();
    Result encerrar();
    Result reabrir();

    bool loaded() const { return m_mov.ID != 0; }
    bool aberto() const { return m_mov.STATUS == QLatin1String("ABERTO"); }
    const clsMovimento& movimento() const { return m_mov; }
    QString statusLabel() const; // "CAIXA PRONTO" / "CAIXA ENCERRADO"
    bool reload();

private:
    bool sumDay(Money& arrecadado, Money& entrada, Money& saida);

    AppContext& m_ctx;
    CounterPrinter* m_printer;
    clsMovimento m_mov;
};
