#pragma once

#include <QString>
#include <QStringList>

class clsDataAccess;

// The tables of the central database of several counters: RECEBIMENTOS1 (one row per code, a
// unique index on the code; a row is a counter's claim until its receipt arrives), SelosRede
// (each counter's closing seal of each day) and ImportacaoRede (where each import of an earlier
// database stands, so that an interrupted one resumes). docs/REDE.md shows the same statements.
class CentralSchema {
public:
    static const QStringList& statements();
    // Whether the tables are there; when they are not, makes them (the user needs the right to
    // create tables). False, with the reason, when neither.
    static bool preparar(clsDataAccess& db, QString* why);
    // The cheapest round trip: whether the central still answers.
    static bool responde(clsDataAccess& db);
};
