#pragma once

#include "GuideKind.h"

#include <QList>
#include <QString>
#include <optional>

class clsDataAccess;

// One kind of guide or item (CodBarra).
class clsCodBarra {
public:
    explicit clsCodBarra(clsDataAccess& db) : m_db(&db) {}

    qint16 IDCOD = 0;
    QString IDTIPO;
    QString DESCRICAO;
    QString PADRAO;
    QString Juros; // column JUROS
    QString BLOQUEIO;
    QString CODBANCO;

    bool SQLSelect(int idcod);
    bool inserir();
    bool alterar(); // every column but the key
    bool excluir();
    // How many receipts, cash items and count lines name the kind; nullopt on failure.
    static std::optional<qint64> usos(clsDataAccess& db, int idcod);
    GuideKind kind() const;

    // The lists of kinds the screens and the reading offer. nullopt when the read failed (logged).
    enum class Lista {
        Entrada, // codes below 100, by description: the counter's and the corrections' list
        Avulso,  // entry kinds that are neither bank slips nor Febraban guides
        Especie, // kinds of money (PADRAO "S")
    };
    static std::optional<GuideKinds> listar(clsDataAccess& db, Lista lista);
    // The kinds whose IDTIPO is one of the reading's four candidates (positions 25-27, 20-24,
    // 30-34, 16-19). "PADRAO <> 'S'" binds to the last candidate only: kinds of the other three
    // are listed whatever their standard.
    static std::optional<GuideKinds> candidatosLeitura(clsDataAccess& db, const QString& a,
                                                       const QString& b, const QString& c,
                                                       const QString& d);
    // Every kind with this IDTIPO.
    static std::optional<GuideKinds> porIdtipo(clsDataAccess& db, const QString& idtipo);

    // The kinds of one standard ("C" bank slips, "F" Febraban guides ...) by description.
    static std::optional<QList<clsCodBarra>> listarPorPadrao(clsDataAccess& db,
                                                             const QString& padrao);

    // Every kind ordered by code (the registry screen's list); nullopt when the read failed.
    static std::optional<QList<clsCodBarra>> listar(clsDataAccess& db);

private:
    clsDataAccess* m_db;
};
