#pragma once

#include "Money.h"
#include "Notice.h"
#include "clsMovimento.h"

#include <QStringList>
#include <functional>

class AppContext;

// The integration file of a movement for the accounting system: a header, one record per
// receipt, each withdrawal or payment out with its items, and a footer, 200 characters each,
// ISO-8859-1 with CRLF. A record of the wrong length is left out and reported by its kind; the
// file appears under its final name only when complete, and a failed run leaves no file.
class IntegrationFile {
public:
    struct Result {
        bool written = false;
        QString arquivo;
        int registros = 0;    // records in the file
        QStringList erros;    // kinds of the records left out, each once, in order
        QList<Notice> avisos; // what the operator is told, in order, once the run is over

        void mostrar(DialogPort& dialogs) const {
            for (const Notice& n : avisos)
                tell(dialogs, n);
        }
    };

    static constexpr int kPausaPadrao = 500;

    explicit IntegrationFile(AppContext& ctx);

    // Called after each receipt record: records done, receipts in all.
    std::function<void(int feitos, int total)> progress;
    // The pause after each receipt, entry and item, so the progress can be followed; 0 writes
    // at full speed.
    int pausaMs = 0;
    // How a pause is spent; by default the event loop keeps running meanwhile.
    std::function<void(int ms)> wait;

    // [Export] pausa_integracao in milliseconds; 500 when it is not set.
    static int pausaConfigurada(AppContext& ctx);
    // Path1 (the application folder when empty, relative to it when relative) + counter +
    // "_" + yyyymmddhhnn + ".INT".
    QString caminhoPadrao() const;

    // `confCaixa` is the footer's CONFCAIXA; `destino` replaces the default path when given.
    // What the operator is to be told is in the result's notices.
    Result gerar(const clsMovimento& mov, Money confCaixa, const QString& destino = {});

private:
    void pause();
    void fail(Result& res, const QString& detail);

    AppContext& m_ctx;
};
