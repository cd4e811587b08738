#pragma once

#include "GuideKind.h"
#include "Money.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class AppContext;

// What the reading routine decided about one code, and the item it hands on.
struct ReadingDecision {
    // The reading's own outcomes, then the counter's (Recusada: overdue guide refused by the
    // operator; Encerrado: the day is closed; Linha: a typed line that does not convert).
    enum class Outcome {
        Aceito,
        Lancada,
        Recebida,
        Bloqueada,
        Desconhecida,
        Digito,
        NaoReconhecida,
        Ignorada,
        Erro,
        Recusada,
        Encerrado,
        Linha
    };
    // The item-adding operation the code goes to: Pagto_febraban, Pagto_cnab, Pagto_diversos.
    enum class Route { None, Febraban, Cnab, Diversos };

    Outcome outcome = Outcome::Ignorada;
    QStringList mensagens; // the texts the operator was shown, in order
    bool clearField = false;
    bool clearKind = false;
    bool showNetworkLabel = false;
    bool networkChecked = false; // lblStatusRede is set (shown or hidden) only when true
    GuideKinds kinds;            // the kind list as filled

    // When accepted:
    Route route = Route::None;
    int idcod = 0;
    QString descricao;
    QDate vencimento; // invalid when the slip has no due date
    Money valor;
    bool juros = false; // the interest flag of Febraban guides and CNAB slips
};

// The reading routine of the counter: duplicate refusal, kind of guide, check digit, value and
// due date by layout, the earlier-year block and the interest flag. It shows the notices through
// the dialog port; the counter only acts on the decision.
class BarcodeReader {
public:
    static const QString kLabel; // "Função de Leitura Código de Barras"

    explicit BarcodeReader(AppContext& ctx);

    ReadingDecision Leitura_codigo_barras(const QString& code, const QDate& workingDate,
                                          const QStringList& customerBarcodes);

    // The one kind with this IDTIPO; nullopt when none or several match, or when the read failed
    // (then "Erro na leitura do código de barras!!" is shown).
    std::optional<GuideKind> Busca_padrao(const QString& idtipo);
    bool Conta_recebida(const QString& code);
    // With a central database ([Rede]) both ask it; without one, the network is the operating
    // system's word and RECEBIMENTOS1 the counter's own table.
    bool Conta_recebida_rede(const QString& code);
    bool Rede_ativa() const;

    // The duplicate refusals of a read, without a word to the operator: Lancada (on the
    // customer's list), Recebida (received here or, with the network on, at another counter),
    // or nothing. Codes starting "000" are never refused. `networkDown` is set when the shared
    // check was skipped because the network was down.
    std::optional<ReadingDecision::Outcome> duplicado(const QString& code,
                                                      const QStringList& customerBarcodes,
                                                      bool* networkChecked = nullptr,
                                                      bool* networkDown = nullptr);
    static QString textoDuplicado(ReadingDecision::Outcome o); // "Conta já Lançada!!!" ...

    std::function<bool()> networkAlive; // the operating system's word on the network
    // The kind list as filled (empty when no kind matches), and again when its first entry is
    // selected (the check digit held), before any notice is shown.
    std::function<void(const GuideKinds&, bool selectFirst)> kindsFilled;

private:
    bool duplicate(const QString& code, const QStringList& customerBarcodes, ReadingDecision& d);
    // nullopt when the central did not answer in time.
    std::optional<bool> recebidaRede(const QString& code);
    std::optional<GuideKind> kindOf(const QString& idtipo);
    bool fillKinds(const QString& code, ReadingDecision& d);
    void febraban(const QString& code, const QDate& working, ReadingDecision& d);
    void bankSlip(const QString& code, const QDate& working, const QStringList& kinds,
                  ReadingDecision& d);
    bool yearBlocked(const QDate& due, const QDate& working, const QStringList& kinds,
                     ReadingDecision& d);
    void notice(ReadingDecision& d, const QString& form, const QString& caption,
                const QStringList& lines);
    void runtimeError(ReadingDecision& d, const QString& what);

    AppContext& m_ctx;
    QHash<QString, std::optional<GuideKind>> m_kindsRead; // this read's Busca_padrao answers
};
