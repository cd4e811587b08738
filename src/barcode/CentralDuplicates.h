#pragma once

#include <QString>
#include <optional>

class AppContext;

// The central's word on a code received at another counter, as the reading asks it. The reading
// owns the question; the network side answers it and is registered once at start, so the
// decoder never reaches for the central itself. Without an answerer there is no central.
class CentralDuplicates {
public:
    virtual ~CentralDuplicates() = default;

    // Config.ini names a central for this folder.
    virtual bool configurada(AppContext& ctx) = 0;
    // Whether the central answered its last check.
    virtual bool ativa(AppContext& ctx) = 0;
    // Whether the central holds the code; nullopt when it did not answer in time.
    virtual std::optional<bool> recebida(AppContext& ctx, const QString& codbarra) = 0;

    static void registrar(CentralDuplicates* answerer);
    static CentralDuplicates* answerer();
};
