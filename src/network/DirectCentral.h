#pragma once

#include "CentralLink.h"
#include "CentralNetwork.h"

#include <QElapsedTimer>

class AppContext;

// The central for a command (or a test): everything runs in the caller's thread, each wait
// bounded by the time-out, and the operator is told through the run's dialog port. A central
// found unreachable is tried again only after a pause, so a run of reads does not pay the
// time-out for each; one that let a command wait its whole time-out is not waited for by the
// next commands either, for kPausaComandosS (recorded in the database), unless they ask for it
// explicitly (semPausa: `rede status`, `rede publicar`).
class DirectCentral final : public CentralNetwork {
public:
    explicit DirectCentral(AppContext& ctx);

    bool configurada() override { return m_config.configurada(); }
    bool ativa() override;
    std::optional<bool> recebida(const QString& codbarra) override;
    ReservaRede reservar(const QStringList& codigos, const QString& origem,
                         const QString& guiche) override;
    void liberar(const QString& reserva) override;
    void publicar() override;
    QStringList novidades() override { return {}; }

    struct Totais {
        int enviados = 0;
        int conflitos = 0;
        bool completo = true; // nothing left pending
    };
    // Sends the whole outbox (publicar() does the same, for the recorders).
    Totais enviarTudo();
    CentralLink& link() { return m_link; }

    // The explicit commands always try the central.
    void semPausa() { m_respeitaPausa = false; }

    static constexpr int kPausaMs = 3000;
    static constexpr int kPausaComandosS = 30;

private:
    void avisar();
    void conectar();

    AppContext& m_ctx;
    CentralConfig m_config;
    CentralLink m_link;
    QElapsedTimer m_ultimaTentativa;
    bool m_respeitaPausa = true;
    bool m_avisadoSozinho = false;
};
