#pragma once

#include "CashCount.h"
#include "EntryKind.h"
#include "Money.h"
#include "clsAutenticacoes.h"
#include "clsConfCaixa.h"
#include "clsEstornos.h"
#include "clsItens.h"

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class AppContext;

// The day's bulletin: everything the treasury signs for one cash day, gathered from the queries
// the counter, the cash count and the corrections already use, so the bulletin and those
// commands cannot disagree.
struct DayBulletin {
    // Receipts of one kind of guide: what the documents were worth and what the counter added.
    struct KindLine {
        int idcod = 0;
        QString descricao;
        qint64 quantidade = 0;
        Money valorFace; // the value the documents carry
        Money encargos;  // interest and fine charged on top
        Money total;     // what was paid
    };
    struct OneOff {
        qint32 autentica = 0;
        QString descricao;
        QString vencimento;
        QString parcela;
        QString obs;
        Money valor;
    };
    struct Entry {
        qint32 id = 0;
        EntryKind kind = EntryKind::CashIn;
        QString descricao;
        Money valor;
        QList<clsItens> itens;
    };
    struct Correction {
        clsEstornos row;
        QString tipoDescricao;
    };

    QString prefeitura; // [Mensagem] pref
    QString cabecalho;  // [Mensagem] cabecalho
    QString guiche;
    QDate data;
    qint32 idMovimento = 0;
    qint16 mov = 0;
    QString status;
    bool fechado = false;
    QStringList operadores; // named in the day's record
    QString emitidoPor;
    QDateTime emitidoEm;

    QList<KindLine> porTipo;
    KindLine totalRecebido; // every kind together
    QList<OneOff> avulsos;
    QList<Entry> lancamentos;
    Money totalDe(EntryKind k) const;

    std::optional<Money> cofre; // [Reserva] cofre now; nullopt when it is not money
    Money suprimento;           // the day's supplies (Movimento.SUPRIMENTO)

    CashConference conferencia;
    bool conferenciaProvisoria = false; // an open day: receipts and entries summed now
    QList<clsConfCaixa> contagem;

    QList<Correction> correcoes;
    // The day's receipts the printer never confirmed as stamped, and how many were stamped more
    // than once.
    QList<clsAutenticacoes::Pendente> semAutenticacao;
    qint64 autenticacoesRepetidas = 0;
    QString selo; // Movimento.HASH_CADEIA of a closed day

    // The bulletin of `day`. nullopt with `why` set when the day has no movement or a query
    // failed.
    static std::optional<DayBulletin> montar(AppContext& ctx, const QDate& day, QString* why);
};
