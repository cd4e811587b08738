#include "clsUsuarios.h"

#include "AuditChain.h"
#include "clsDataAccess.h"

namespace {
// Operators are chained: a name, type or password hash changed behind the program's back is
// found by the audit.
const QString kTabela = QStringLiteral("Usuarios");
const QString kChave = QStringLiteral("ID");

void fill(clsUsuarios& u, const Recordset& r) {
    u.ID = static_cast<qint32>(r.integer(QStringLiteral("ID")));
    u.NOME = r.text(QStringLiteral("NOME"));
    u.SENHA = r.text(QStringLiteral("SENHA"));
    u.TIPO = r.text(QStringLiteral("TIPO"));
    u.ATIVO = static_cast<qint16>(r.integer(QStringLiteral("ATIVO")));
}
} // namespace

bool clsUsuarios::SQLSelect(qint32 id) {
    const auto rs = m_db->SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, NOME, SENHA, TIPO, ATIVO FROM Usuarios WHERE ID = ?"), {id});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return false;
    fill(*this, *rs);
    return true;
}

std::optional<QList<clsUsuarios>> clsUsuarios::listar(clsDataAccess& db) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT ID, NOME, SENHA, TIPO, ATIVO FROM Usuarios ORDER BY NOME, ID"));
    if (!rs)
        return std::nullopt;
    QList<clsUsuarios> out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext()) {
        clsUsuarios u(db);
        fill(u, r);
        out.append(u);
    }
    return out;
}

bool clsUsuarios::replaceHash(clsDataAccess& db, qint32 id, const QString& from,
                              const QString& to) {
    return AuditChain::execute(
        db, kTabela, kChave, id, AuditChain::Op::Update,
        QStringLiteral("UPDATE Usuarios SET SENHA = ? WHERE ID = ? AND SENHA = ?"), {to, id, from});
}

bool clsUsuarios::inserirNovo() {
    qint64 id = 0;
    if (!AuditChain::insert(
            *m_db, kTabela, kChave,
            QStringLiteral("INSERT INTO Usuarios (NOME, SENHA, TIPO, ATIVO) VALUES (?, ?, ?, ?)"),
            {NOME, SENHA, TIPO, int(ATIVO)}, id))
        return false;
    ID = static_cast<qint32>(id);
    return true;
}

bool clsUsuarios::alterar() {
    if (SENHA.isEmpty())
        return AuditChain::execute(
            *m_db, kTabela, kChave, ID, AuditChain::Op::Update,
            QStringLiteral("UPDATE Usuarios SET NOME = ?, TIPO = ?, ATIVO = ? WHERE ID = ?"),
            {NOME, TIPO, int(ATIVO), ID});
    return AuditChain::execute(
        *m_db, kTabela, kChave, ID, AuditChain::Op::Update,
        QStringLiteral("UPDATE Usuarios SET NOME = ?, SENHA = ?, TIPO = ?, ATIVO = ? WHERE ID = ?"),
        {NOME, SENHA, TIPO, int(ATIVO), ID});
}

bool clsUsuarios::SQLDelete() {
    return AuditChain::execute(*m_db, kTabela, kChave, ID, AuditChain::Op::Delete,
                               QStringLiteral("DELETE FROM Usuarios WHERE ID = ?"), {ID});
}

UserType clsUsuarios::tipoDe(const QString& tipo) {
    return tipo == QLatin1String("ADM") ? UserType::Admin : UserType::User;
}

QString clsUsuarios::texto(UserType t) {
    return t == UserType::Admin ? QStringLiteral("ADM") : QStringLiteral("USER");
}

std::optional<UserType> clsUsuarios::lerTipo(const QString& tipo) {
    if (tipo == QLatin1String("ADM"))
        return UserType::Admin;
    if (tipo == QLatin1String("USER"))
        return UserType::User;
    return std::nullopt;
}
