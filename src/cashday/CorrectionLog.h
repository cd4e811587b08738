#pragma once

#include "Money.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

class AppContext;

// The yearly text log of reversals and changes, "Estorno_<guiche>_<yyyy>.txt": one file per
// counter and year in the folder of [Export] Path2 (the program folder when Path2 is empty).
// A new file starts with its header; entries are only ever appended.
class CorrectionLog {
public:
    enum class Kind { Estorno, Alteracao, Reversao };

    struct Entry {
        Kind kind = Kind::Estorno;
        int movimento = 0;
        QDate data;
        QString usuario;  // who allowed it (the administrator)
        QString operador; // the operator at the counter, when an administrator allowed it
        int autentica = 0;
        QString tipo;
        Money valor;
        std::optional<Money> valorAnterior;  // a change of the amount
        std::optional<QString> tipoAnterior; // a change of the type
        QString arquivoBanco; // the bank files that already carried the receipt, when any
        QString motivo;
    };

    explicit CorrectionLog(const AppContext& ctx);

    QString folder() const;
    QString path(int year) const;
    QString currentPath() const; // the clock's year

    // Whether an entry can be appended to this year's file now. `why` names the folder.
    bool podeGravar(QString* why = nullptr) const;
    // Appends the entry to this year's file, headed first when the file is new.
    bool append(const Entry& e, QString* error = nullptr) const;

    // Appends entries to the file of `year`, headed first when the file is new; a last line
    // left without its line end (a crash while writing) is ended first.
    bool appendTo(int year, const QList<Entry>& entries, QString* error = nullptr) const;
    // What identifies an entry once written: its kind and its lines but the kind's description
    // and the bank files, which may have changed since.
    static QString chave(Kind kind, const QStringList& fields);

    QStringList header() const;
    static QStringList lines(const Entry& e);

    // The files read back, newest year first; with `year`, that year's only.
    struct YearFile {
        int year = 0;
        QString path;
        QStringList lines;
    };
    QList<YearFile> read(std::optional<int> year = {}) const;
    // The entries of a file's lines, in file order; lines of the header are skipped.
    struct ParsedEntry {
        Kind kind = Kind::Estorno;
        QStringList fields;                        // "Movimento: 001" ... as written
        QString value(const QString& label) const; // the text after "label: ", or empty
    };
    static QList<ParsedEntry> parse(const QStringList& lines);

    static const QString kCabecalho;       // "CONTROLE DE RECEBIMENTO DIÁRIO - "
    static const QString kMotivoEstorno;   // "Motivo do estorno: "
    static const QString kMotivoAlteracao; // "Motivo da Alteração: "
    static const QString kEstornoRevertido;
    static const QString kArquivoBanco; // "Arquivo do banco: "

private:
    QString fileName(int year) const;
    const AppContext& m_ctx;
};
