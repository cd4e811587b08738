#include "clsImportacaoRede.h"

#include "clsDataAccess.h"

std::optional<bool> clsImportacaoRede::SQLSelect(const QString& chave) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT CHAVE, ARQUIVO, POSICAO, LIDOS, IMPORTADOS, JA_EXISTENTES, "
                       "INVALIDOS, IGNORADOS, CONCLUIDA FROM ImportacaoRede WHERE CHAVE = ?"),
        {chave});
    if (!rs)
        return std::nullopt;
    if (!rs->atRow())
        return false;
    CHAVE = rs->text(QStringLiteral("CHAVE"));
    ARQUIVO = rs->text(QStringLiteral("ARQUIVO"));
    POSICAO = rs->integer(QStringLiteral("POSICAO"));
    LIDOS = rs->integer(QStringLiteral("LIDOS"));
    IMPORTADOS = rs->integer(QStringLiteral("IMPORTADOS"));
    JA_EXISTENTES = rs->integer(QStringLiteral("JA_EXISTENTES"));
    INVALIDOS = rs->integer(QStringLiteral("INVALIDOS"));
    IGNORADOS = rs->integer(QStringLiteral("IGNORADOS"));
    CONCLUIDA = rs->integer(QStringLiteral("CONCLUIDA")) != 0;
    return true;
}

bool clsImportacaoRede::gravar() {
    return m_db->SQLExecute(
        QStringLiteral("INSERT INTO ImportacaoRede (CHAVE, ARQUIVO, POSICAO, LIDOS, IMPORTADOS, "
                       "JA_EXISTENTES, INVALIDOS, IGNORADOS, CONCLUIDA, ATUALIZADA) VALUES (?, ?, "
                       "?, ?, ?, ?, ?, ?, ?, now()) ON CONFLICT (CHAVE) DO UPDATE SET ARQUIVO = "
                       "EXCLUDED.ARQUIVO, POSICAO = EXCLUDED.POSICAO, LIDOS = EXCLUDED.LIDOS, "
                       "IMPORTADOS = EXCLUDED.IMPORTADOS, JA_EXISTENTES = EXCLUDED.JA_EXISTENTES, "
                       "INVALIDOS = EXCLUDED.INVALIDOS, IGNORADOS = EXCLUDED.IGNORADOS, CONCLUIDA "
                       "= EXCLUDED.CONCLUIDA, ATUALIZADA = now()"),
        {CHAVE, ARQUIVO, POSICAO, LIDOS, IMPORTADOS, JA_EXISTENTES, INVALIDOS, IGNORADOS,
         CONCLUIDA ? 1 : 0});
}
