#include "DirectCentral.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "SystemTexts.h"
#include "clsPublicacaoRede.h"

#include <utility>

DirectCentral::DirectCentral(AppContext& ctx)
    : m_ctx(ctx), m_config(CentralConfig::fromIni(ctx.iniPath())), m_link(ctx.errors, ctx.clock) {}

void DirectCentral::avisar() {
    if (m_link.problemaNovo())
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::AvisoRede).arg(m_link.problema()));
}

bool DirectCentral::ativa() {
    if (!m_config.configurada())
        return false;
    if (!m_link.ativa() &&
        (!m_ultimaTentativa.isValid() || m_ultimaTentativa.hasExpired(kPausaMs))) {
        m_ultimaTentativa.start();
        conectar();
    }
    return m_link.ativa();
}

void DirectCentral::conectar() {
    // Real time, not the run's clock: this is about how long the network keeps us waiting.
    const QDateTime agora = QDateTime::currentDateTimeUtc();
    const auto pausa = clsPublicacaoRede::pausa(m_ctx.db);
    if (m_respeitaPausa && pausa && pausa->ate.isValid() && agora < pausa->ate)
        return; // told by the command that waited
    // A command's statements wait the time-out at most: it is what the operator waits.
    m_link.conectar(m_config, m_config.tempoMs);
    avisar();
    if (m_ctx.db.readOnly() || !pausa)
        return;
    if (m_link.semResposta())
        clsPublicacaoRede::gravarPausa(m_ctx.db,
                                       {agora.addSecs(kPausaComandosS), m_link.problema()});
    else if (pausa->ate.isValid() && m_link.ativa())
        clsPublicacaoRede::gravarPausa(m_ctx.db, {});
}

std::optional<bool> DirectCentral::recebida(const QString& codbarra) {
    if (!ativa())
        return std::nullopt;
    const auto r = m_link.recebida(codbarra);
    avisar();
    return r;
}

ReservaRede DirectCentral::reservar(const QStringList& codigos, const QString& origem,
                                    const QString& guiche) {
    const bool jaAvisado = !m_link.problema().isEmpty();
    ReservaRede r;
    if (ativa())
        r = m_link.reservar(codigos, origem, guiche);
    avisar();
    // A central not even tried (a command waited for it a moment ago) has said nothing in this
    // run: the operator still learns, once, that this counter records alone.
    if (r.estado == ReservaRede::Estado::Sozinho && !jaAvisado && m_link.problema().isEmpty() &&
        !std::exchange(m_avisadoSozinho, true))
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CentralSozinho));
    return r;
}

void DirectCentral::liberar(const QString& reserva) {
    m_link.liberar(reserva);
}

DirectCentral::Totais DirectCentral::enviarTudo() {
    Totais t;
    if (!ativa()) {
        t.completo = false;
        return t;
    }
    for (;;) {
        const CentralLink::Envio e = m_link.enviar(m_ctx.db);
        t.enviados += e.enviados;
        t.conflitos += int(e.conflitos.size());
        for (const clsConflitoRede& c : e.conflitos)
            tell(m_ctx.dialogs,
                 SystemTexts::notice(SystemText::AvisoRede).arg(CentralLink::textoConflito(c)));
        avisar();
        if (e.falhou) {
            t.completo = false;
            return t;
        }
        if (!e.restam)
            return t;
    }
}

void DirectCentral::publicar() {
    enviarTudo();
}
