#pragma once

#include <QList>
#include <QString>

// One kind of guide or item as the core passes it around: a CodBarra row with its flags read.
struct GuideKind {
    // PADRAO: the barcode standard of the kind; kinds of money and exit items are Especie.
    enum class Padrao { Febraban, Cnab, Especie, Outro };

    int idcod = 0;
    QString idtipo;
    QString descricao;
    Padrao padrao = Padrao::Outro;
    QString padraoLetra;   // the column as stored ("F", "C", "S", or another letter)
    bool juros = false;    // JUROS "S": overdue guides of this kind are charged
    bool bloqueio = false; // BLOQUEIO "S": guides of an earlier year are refused
    QString codbanco;

    static Padrao padraoOf(const QString& letter);
};

using GuideKinds = QList<GuideKind>;
