#pragma once

#include "clsMovimento.h"

class AppContext;
class CounterPrinter;

// The cash day of the working date: opening (or resuming), closing and reopening.
class CashDay {
public:
    CashDay(AppContext& ctx, CounterPrinter* printer);

    // Opens the working date's movement, or resumes the one it already has; either way the
    // daily control file is rebuilt from the receipts.
    bool abrir();
    // Loads the working date's movement without opening one.
    bool consultar();

    // Closing and reopening. The callers ask the questions below first (the screen asks the
    // operator, the command line takes its options) and the core does the work without asking.
    // The guards show why the day cannot be closed or reopened.
    bool podeEncerrar();
    // Sums the day into the movement, keeps the audit chain's last hash in it and sets FECHADO;
    // then rebuilds the control file and copies the database into copias/ (the last 30 stay).
    bool encerrar();
    bool imprimirEncerramento(); // the closing block on the tape
    bool podeReabrir();
    bool reabrir();
    bool imprimirReabertura();

    bool loaded() const { return m_mov.ID != 0; }
    bool aberto() const { return m_mov.aberto(); }
    const clsMovimento& movimento() const { return m_mov; }
    QString statusLabel() const; // "CAIXA PRONTO" / "CAIXA ENCERRADO"
    bool reload();

private:
    bool setStatus(DayStatus status, bool withSums, QString* recusa = nullptr);
    void copiaDeSeguranca();

    AppContext& m_ctx;
    CounterPrinter* m_printer;
    clsMovimento m_mov;
};
