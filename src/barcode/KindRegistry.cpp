#include "KindRegistry.h"

#include "ActLog.h"
#include "AppContext.h"
#include "FileText.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsDataAccess.h"

namespace {

bool flagSN(const QString& v) {
    return v == QLatin1String("S") || v == QLatin1String("N");
}

KindRegistry::Input normalised(const KindRegistry::Input& in) {
    KindRegistry::Input n = in;
    n.idtipo = in.idtipo.trimmed();
    n.descricao = in.descricao.trimmed();
    n.padrao = in.padrao.trimmed().toUpper();
    n.juros = in.juros.trimmed().toUpper();
    n.bloqueio = in.bloqueio.trimmed().toUpper();
    n.codbanco = in.codbanco.trimmed();
    return n;
}

} // namespace

QString KindRegistry::codeText(int idcod) {
    return QStringLiteral("%1").arg(idcod, 3, 10, QLatin1Char('0'));
}

KindRegistry::Result KindRegistry::check(const Input& raw) {
    const Input in = normalised(raw);
    const std::pair<Field, bool> required[] = {
        {Field::IDCOD, !in.idcod.has_value()},      {Field::IDTIPO, in.idtipo.isEmpty()},
        {Field::DESCRICAO, in.descricao.isEmpty()}, {Field::PADRAO, in.padrao.isEmpty()},
        {Field::JUROS, in.juros.isEmpty()},         {Field::BLOQUEIO, in.bloqueio.isEmpty()}};
    for (const auto& [field, empty] : required)
        if (empty)
            return {Outcome::MissingField, field};
    // The description is printed on stamps and the tape and written in the sum file.
    if (QString why = FileText::problem(in.descricao, FileText::Field::DescricaoTipo);
        !why.isEmpty())
        return {Outcome::TextRefused, Field::DESCRICAO, why};
    if (*in.idcod < 1 || *in.idcod > 999)
        return {Outcome::CodeOutOfRange, Field::IDCOD};
    if (in.padrao.size() != 1)
        return {Outcome::InvalidFlags, Field::PADRAO};
    if (!flagSN(in.juros))
        return {Outcome::InvalidFlags, Field::JUROS};
    if (!flagSN(in.bloqueio))
        return {Outcome::InvalidFlags, Field::BLOQUEIO};
    return {};
}

KindRegistry::Result KindRegistry::gravar(AppContext& ctx, const Input& raw, Mode mode) {
    clsDataAccess& db = ctx.db;
    const Result checked = check(raw);
    if (!checked.ok())
        return checked;
    const Input in = normalised(raw);
    // The existence check and the write under one lock, so two saves of one code cannot both
    // pass it.
    Transaction tx(db);
    if (!tx.ok())
        return {Outcome::WriteFailed, Field::None};
    const bool exists = clsCodBarra(db).SQLSelect(*in.idcod);
    if (mode == Mode::Insert && exists)
        return {Outcome::CodeInUse, Field::IDCOD};
    if (mode == Mode::Update && !exists)
        return {Outcome::NotFound, Field::IDCOD};
    // Two kinds with one layout code would make the reading's choice between them arbitrary.
    const auto same = clsCodBarra::porIdtipo(db, in.idtipo);
    if (!same)
        return {Outcome::WriteFailed, Field::None};
    for (const GuideKind& other : *same)
        if (other.idcod != *in.idcod)
            return {Outcome::LayoutInUse, Field::IDTIPO,
                    SystemTexts::text(SystemText::LeiauteEmUso)
                        .arg(in.idtipo,
                             codeText(other.idcod) + QStringLiteral(" - ") + other.descricao)};
    clsCodBarra k(db);
    k.IDCOD = static_cast<qint16>(*in.idcod);
    k.IDTIPO = in.idtipo;
    k.DESCRICAO = in.descricao;
    k.PADRAO = in.padrao;
    k.Juros = in.juros;
    k.BLOQUEIO = in.bloqueio;
    k.CODBANCO = in.codbanco;
    if (!(mode == Mode::Insert ? k.inserir() : k.alterar()) ||
        !ActLog::gravar(ctx, Act::TiposGuia,
                        mode == Mode::Insert ? ActLog::Acao::Inclusao : ActLog::Acao::Alteracao,
                        QStringLiteral("CodBarra"), k.IDCOD) ||
        !tx.commit())
        return {Outcome::WriteFailed, Field::None};
    return {};
}

KindRegistry::DeleteOutcome KindRegistry::excluir(AppContext& ctx, int idcod) {
    clsDataAccess& db = ctx.db;
    Transaction tx(db);
    if (!tx.ok())
        return DeleteOutcome::Failed;
    clsCodBarra k(db);
    if (!k.SQLSelect(idcod))
        return DeleteOutcome::NotFound;
    const auto usos = clsCodBarra::usos(db, idcod);
    if (!usos)
        return DeleteOutcome::Failed;
    if (*usos > 0)
        return DeleteOutcome::InUse;
    if (!k.excluir() ||
        !ActLog::gravar(ctx, Act::TiposGuia, ActLog::Acao::Exclusao, QStringLiteral("CodBarra"),
                        idcod) ||
        !tx.commit())
        return DeleteOutcome::Failed;
    return DeleteOutcome::Deleted;
}
