#pragma once

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
    // Mode 1 inserts, mode 2 updates every column but the key.
    bool Gravar(int mode);
    bool Excluir();

    // Every kind ordered by code (the registry screen's list); nullopt when the read failed.
    static std::optional<QList<clsCodBarra>> listar(clsDataAccess& db);

private:
    clsDataAccess* m_db;
};
