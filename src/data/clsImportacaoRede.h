#pragma once

#include <QString>
#include <optional>

class clsDataAccess;

// ImportacaoRede (in the central database): how far the import of one earlier database has
// gone, written in the transaction of each batch, so that an import cut short resumes where its
// last batch ended and counts nothing twice.
class clsImportacaoRede {
public:
    explicit clsImportacaoRede(clsDataAccess& db) : m_db(&db) {}

    QString CHAVE; // the file's content hash
    QString ARQUIVO;
    qint64 POSICAO = 0; // where the next batch starts (a byte offset or a receipt id)
    qint64 LIDOS = 0;
    qint64 IMPORTADOS = 0;
    qint64 JA_EXISTENTES = 0;
    qint64 INVALIDOS = 0;
    qint64 IGNORADOS = 0;
    bool CONCLUIDA = false;

    // true: an import of this file is recorded (finished or not); false: none; nullopt: failure.
    std::optional<bool> SQLSelect(const QString& chave);
    bool gravar(); // inserted or replaced

private:
    clsDataAccess* m_db;
};
