#include "AuditChain.h"

#include "Transaction.h"
#include "clsDataAccess.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>
#include <limits>
#include <map>

const QString AuditChain::kGenesis = QString(64, QLatin1Char('0'));

namespace {

struct ChainedTable {
    QString name;
    QString keyColumn;
};

// Tables whose rows `auditar` scans even before their first entry.
const QList<ChainedTable> kTables = {
    {QStringLiteral("Recebimentos"), QStringLiteral("IDRECEBE")},
    {QStringLiteral("Sangria"), QStringLiteral("ID")},
    {QStringLiteral("Itens"), QStringLiteral("ID")},
    {QStringLiteral("ConfCaixa"), QStringLiteral("ID")},
    {QStringLiteral("Estornos"), QStringLiteral("ID")},
    {QStringLiteral("ConflitoRede"), QStringLiteral("ID")},
    {QStringLiteral("CofreMovimentos"), QStringLiteral("ID")},
    {QStringLiteral("ArquivosBanco"), QStringLiteral("ID")},
    {QStringLiteral("AutenticacoesAvulsas"), QStringLiteral("ID")},
    {QStringLiteral("Autenticacoes"), QStringLiteral("IDRECEBE")},
    {QStringLiteral("Atos"), QStringLiteral("ID")},
    {QStringLiteral("Movimento"), QStringLiteral("ID")},
    {QStringLiteral("Usuarios"), QStringLiteral("ID")},
    {QStringLiteral("Guiche"), QStringLiteral("ID")},
    {QStringLiteral("PublicacaoRede"), QStringLiteral("ID")},
};

QString opCode(AuditChain::Op op) {
    switch (op) {
    case AuditChain::Op::Insert:
        return QStringLiteral("I");
    case AuditChain::Op::Update:
        return QStringLiteral("U");
    case AuditChain::Op::Delete:
        break;
    }
    return QStringLiteral("D");
}

QString valueText(const QVariant& v) {
    switch (v.typeId()) {
    case QMetaType::QDate:
        return v.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return v.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    case QMetaType::Bool:
        return v.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    default:
        return v.toString();
    }
}

// The row as one text: every column by its upper-case name, sorted, values as text, so that
// both engines and every reader produce the same text for the same row. A quote never appears
// in it (written as its JSON escape). A password's hash enters only as its own digest: a change
// is still seen, and the chain keeps no hash that could be tried against guesses.
QString canonical(const QStringList& fields, const QVector<QVariant>& values) {
    QJsonObject o;
    for (int i = 0; i < fields.size(); ++i) {
        const QVariant& v = values.at(i);
        const QString name = fields.at(i).toUpper();
        QString text = valueText(v);
        if (name == QLatin1String("SENHA"))
            text = QString::fromLatin1(
                QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex());
        o.insert(name, v.isNull() ? QJsonValue() : QJsonValue(text));
    }
    return QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Compact))
        .replace(QLatin1Char('\''), QStringLiteral("\\u0027"));
}

QByteArray digest(const QString& content) {
    return QCryptographicHash::hash(content.toUtf8(), QCryptographicHash::Sha256);
}

std::optional<QString> rowContent(clsDataAccess& db, const QString& table, const QString& keyColumn,
                                  qint64 key) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT * FROM %1 WHERE %2 = ?").arg(table, keyColumn), {key});
    if (!clsDataAccess::CheckValidRecordset(rs))
        return std::nullopt;
    return canonical(rs->fields(), rs->rows().first());
}

// The text shown for a row: its table and key, with its movement and authentication number
// when it has them.
QString describeRow(const QString& table, const QString& keyColumn, qint64 key,
                    const QString& content) {
    QString text = QStringLiteral("%1 %2=%3").arg(table, keyColumn).arg(key);
    const QJsonObject o = QJsonDocument::fromJson(content.toUtf8()).object();
    QStringList extra;
    // An empty column (an outbox row of no movement) is not named.
    if (const QString mov = o.value(QStringLiteral("IDMOVIMENTO")).toString(); !mov.isEmpty())
        extra << QStringLiteral("movimento ") + mov;
    if (const QString aut = o.value(QStringLiteral("AUTENTICA")).toString(); !aut.isEmpty())
        extra << QStringLiteral("autenticação ") + aut;
    if (!extra.isEmpty())
        text += QStringLiteral(" (") + extra.join(QStringLiteral(", ")) + QLatin1Char(')');
    return text;
}

QString differences(const QString& before, const QString& now) {
    const QJsonObject a = QJsonDocument::fromJson(before.toUtf8()).object();
    const QJsonObject b = QJsonDocument::fromJson(now.toUtf8()).object();
    QStringList out;
    QStringList keys = a.keys() + b.keys();
    keys.removeDuplicates();
    keys.sort();
    for (const QString& k : keys) {
        if (!a.contains(k))
            continue; // a column added after the entry was written
        if (a.value(k) != b.value(k))
            out << QStringLiteral("%1 era \"%2\", agora \"%3\"")
                       .arg(k, a.value(k).toString(), b.value(k).toString());
    }
    return out.join(QStringLiteral("; "));
}

} // namespace

QString AuditChain::entryHash(const QString& previous, qint64 seq, const QString& table,
                              const QString& keyColumn, qint64 key, const QString& op,
                              const QString& momento, const QString& content) {
    const QStringList parts = {
        previous, QString::number(seq), table, keyColumn, QString::number(key), op, momento,
        content};
    return QString::fromLatin1(
        QCryptographicHash::hash(parts.join(QLatin1Char('\n')).toUtf8(), QCryptographicHash::Sha256)
            .toHex());
}

std::optional<QString> AuditChain::lastHash(clsDataAccess& db) {
    const auto rs =
        db.SQLSelect_ReadOnly(QStringLiteral("SELECT HASH FROM Cadeia ORDER BY SEQ DESC LIMIT 1"));
    if (!rs)
        return std::nullopt;
    return rs->atRow() ? rs->text(QStringLiteral("HASH")) : kGenesis;
}

bool AuditChain::insert(clsDataAccess& db, const QString& table, const QString& keyColumn,
                        const QString& sql, const QVariantList& params, qint64& newKey) {
    Transaction tx(db);
    qint64 key = 0;
    if (!tx.ok() || !db.SQLInsertIdentity(sql, params, key) ||
        !track(db, table, keyColumn, key, Op::Insert) || !tx.commit())
        return false;
    newKey = key;
    return true;
}

bool AuditChain::execute(clsDataAccess& db, const QString& table, const QString& keyColumn,
                         qint64 key, Op op, const QString& sql, const QVariantList& params) {
    Transaction tx(db);
    return tx.ok() && db.SQLExecute(sql, params) && track(db, table, keyColumn, key, op) &&
           tx.commit();
}

bool AuditChain::track(clsDataAccess& db, const QString& table, const QString& keyColumn,
                       qint64 key, Op op) {
    Transaction tx(db);
    if (!tx.ok())
        return false;
    QString content;
    if (op != Op::Delete) {
        const auto row = rowContent(db, table, keyColumn, key);
        if (!row)
            return false;
        content = *row;
    }
    const auto last = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT SEQ, HASH FROM Cadeia ORDER BY SEQ DESC LIMIT 1"));
    if (!last)
        return false;
    const qint64 seq = last->atRow() ? last->integer(QStringLiteral("SEQ")) + 1 : 1;
    const QString previous = last->atRow() ? last->text(QStringLiteral("HASH")) : kGenesis;
    const QString momento =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    const QString hash =
        entryHash(previous, seq, table, keyColumn, key, opCode(op), momento, content);
    return db.SQLExecute(QStringLiteral("INSERT INTO Cadeia (SEQ, TABELA, CAMPO, CHAVE, OPERACAO, "
                                        "CONTEUDO, MOMENTO, HASH) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
                         {seq, table, keyColumn, key, opCode(op), content, momento, hash}) &&
           tx.commit();
}

bool AuditChain::trackWhere(clsDataAccess& db, const QString& table, const QString& keyColumn,
                            const QString& where, const QVariantList& params) {
    const auto rs = db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT %2 FROM %1 WHERE %3 ORDER BY %2").arg(table, keyColumn, where),
        params);
    if (!rs)
        return false;
    Transaction tx(db);
    if (!tx.ok())
        return false;
    for (const QVector<QVariant>& row : rs->rows())
        if (!track(db, table, keyColumn, variantToInt64(row.at(0)), Op::Update))
            return false;
    return tx.commit();
}

bool AuditChain::adoptExisting(clsDataAccess& db) {
    Transaction tx(db);
    if (!tx.ok())
        return false;
    // A chained table that a later schema version creates has nothing to adopt yet.
    const QStringList existing = db.database().tables();
    for (const ChainedTable& t : kTables) {
        if (!existing.contains(t.name, Qt::CaseInsensitive))
            continue;
        const auto rs = db.SQLSelect_ReadOnly(
            QStringLiteral("SELECT %2 FROM %1 WHERE %2 NOT IN (SELECT CHAVE FROM Cadeia WHERE "
                           "TABELA = ?) ORDER BY %2")
                .arg(t.name, t.keyColumn),
            {t.name});
        if (!rs)
            return false;
        for (const QVector<QVariant>& row : rs->rows())
            if (!track(db, t.name, t.keyColumn, variantToInt64(row.at(0)), Op::Insert))
                return false;
    }
    return tx.commit();
}

namespace {

struct LastEntry {
    qint64 seq = 0;
    bool deleted = false;
    QByteArray digest;
    QString keyColumn;
};

struct Problem {
    qint64 order;
    QString text;
};

QString entryContent(clsDataAccess& db, qint64 seq) {
    const auto rs =
        db.SQLSelect_ReadOnly(QStringLiteral("SELECT CONTEUDO FROM Cadeia WHERE SEQ = ?"), {seq});
    return rs && rs->atRow() ? rs->text(QStringLiteral("CONTEUDO")) : QString();
}

bool inMovement(const QString& content, std::optional<qint64> idMovimento) {
    if (!idMovimento)
        return true;
    const QJsonObject o = QJsonDocument::fromJson(content.toUtf8()).object();
    return !o.contains(QStringLiteral("IDMOVIMENTO")) ||
           o.value(QStringLiteral("IDMOVIMENTO")).toString().toLongLong() == *idMovimento;
}

} // namespace

namespace {
// One audit: the chain read whole, then every row of the chained tables compared with its last
// entry. Problems are kept in chain order.
class Audit {
public:
    Audit(clsDataAccess& db, std::optional<qint64> idMovimento, const QMap<QString, QString>& seals)
        : m_db(db), m_idMovimento(idMovimento), m_pending(seals), m_tables(kTables) {}
    bool readChain();
    void compareTables() {
        for (const ChainedTable& t : m_tables)
            compareTable(t);
    }
    void changedAndDeletedRows();
    AuditChain::Report finish();

private:
    void readEntry(const QSqlQuery& q);
    void compareTable(const ChainedTable& t);
    void compareRow(const ChainedTable& t, qint64 key, const QString& content);

    // A row whose content differs from its last entry; the entry's own content is read after the
    // scan (PostgreSQL cannot run a second query while a forward-only one is being read).
    struct Differing {
        QString table, keyColumn, content;
        qint64 key, seq;
        bool wanted;
    };

    clsDataAccess& m_db;
    std::optional<qint64> m_idMovimento;
    QMap<QString, QString> m_pending; // seals (hash -> day) not yet found in the chain
    AuditChain::Report m_r;
    QList<Problem> m_problems;
    std::map<std::pair<QString, qint64>, LastEntry> m_last; // (table, key) -> its last entry
    QList<ChainedTable> m_tables;
    QList<Differing> m_differing;
    QString m_previous = AuditChain::kGenesis;
    qint64 m_expected = 1;
};

bool Audit::readChain() {
    QSqlQuery q(m_db.database());
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT SEQ, TABELA, CAMPO, CHAVE, OPERACAO, CONTEUDO, MOMENTO, "
                               "HASH FROM Cadeia ORDER BY SEQ"))) {
        m_r.ok = false;
        m_r.problems << QStringLiteral("A cadeia não pôde ser lida: ") + m_db.lastError();
        return false;
    }
    while (q.next())
        readEntry(q);
    m_r.lastHash = m_previous;
    return true;
}

void Audit::readEntry(const QSqlQuery& q) {
    const qint64 seq = q.value(0).toLongLong();
    const QString table = q.value(1).toString();
    const QString keyColumn = q.value(2).toString();
    const qint64 key = q.value(3).toLongLong();
    const QString op = q.value(4).toString();
    const QString content = q.value(5).toString();
    const QString stored = q.value(7).toString();
    if (seq != m_expected)
        m_problems << Problem{
            seq,
            QStringLiteral("Cadeia: faltam as entradas %1 a %2.").arg(m_expected).arg(seq - 1)};
    const QString hash = AuditChain::entryHash(m_previous, seq, table, keyColumn, key, op,
                                               q.value(6).toString(), content);
    if (hash != stored)
        m_problems << Problem{seq, QStringLiteral("Cadeia: a entrada %1 (%2) não confere: foi "
                                                  "alterada ou a anterior foi apagada.")
                                       .arg(seq)
                                       .arg(describeRow(table, keyColumn, key, content))};
    else if (!m_pending.isEmpty())
        m_pending.remove(stored);
    m_last[{table, key}] = {seq, op == QLatin1String("D"), digest(content), keyColumn};
    if (std::none_of(m_tables.begin(), m_tables.end(),
                     [&](const ChainedTable& t) { return t.name == table; }))
        m_tables.append({table, keyColumn});
    m_previous = stored; // later entries are checked against what is stored
    m_expected = seq + 1;
    ++m_r.entries;
}

void Audit::compareTable(const ChainedTable& t) {
    QSqlQuery rows(m_db.database());
    rows.setForwardOnly(true);
    if (!rows.exec(QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(t.name, t.keyColumn)))
        return;
    const QSqlRecord rec = rows.record();
    QStringList fields;
    for (int i = 0; i < rec.count(); ++i)
        fields << rec.fieldName(i);
    const int keyIndex = rec.indexOf(t.keyColumn);
    while (rows.next()) {
        QVector<QVariant> values(rec.count());
        for (int i = 0; i < rec.count(); ++i)
            values[i] = rows.value(i);
        compareRow(t, values.at(keyIndex).toLongLong(), canonical(fields, values));
    }
}

void Audit::compareRow(const ChainedTable& t, qint64 key, const QString& content) {
    const bool wanted = inMovement(content, m_idMovimento);
    auto it = m_last.find({t.name, key});
    if (it == m_last.end()) {
        if (wanted)
            m_problems << Problem{std::numeric_limits<qint64>::max(),
                                  QStringLiteral("%1 não está na cadeia: foi gravado fora "
                                                 "do programa.")
                                      .arg(describeRow(t.name, t.keyColumn, key, content))};
        return;
    }
    LastEntry& e = it->second;
    const bool same = e.digest == digest(content);
    e.digest.clear(); // marks the row as present
    if (e.deleted) {
        if (wanted)
            m_problems << Problem{e.seq, QStringLiteral("%1 foi apagado pelo programa mas está de "
                                                        "volta na tabela.")
                                             .arg(describeRow(t.name, t.keyColumn, key, content))};
    } else if (!same) {
        m_differing.append({t.name, t.keyColumn, content, key, e.seq, wanted});
    } else if (wanted) {
        ++m_r.rows;
    }
}

void Audit::changedAndDeletedRows() {
    for (const Differing& d : m_differing) {
        const QString before = entryContent(m_db, d.seq);
        if (!d.wanted && !inMovement(before, m_idMovimento))
            continue; // another day's row
        ++m_r.rows;
        m_problems << Problem{d.seq, QStringLiteral("%1 foi alterado fora do programa: %2.")
                                         .arg(describeRow(d.table, d.keyColumn, d.key, d.content),
                                              differences(before, d.content))};
    }
    for (const auto& [id, e] : m_last) {
        if (e.deleted || e.digest.isEmpty())
            continue;
        const QString content = entryContent(m_db, e.seq);
        if (!inMovement(content, m_idMovimento))
            continue;
        m_problems << Problem{e.seq,
                              QStringLiteral("%1 foi apagado fora do programa.")
                                  .arg(describeRow(id.first, e.keyColumn, id.second, content))};
    }
}

AuditChain::Report Audit::finish() {
    if (!m_r.ok)
        return m_r;
    std::stable_sort(m_problems.begin(), m_problems.end(),
                     [](const Problem& a, const Problem& b) { return a.order < b.order; });
    for (const Problem& p : m_problems)
        m_r.problems << p.text;
    m_r.sealsMissing = m_pending.values();
    m_r.ok = m_r.problems.isEmpty();
    return m_r;
}
} // namespace

AuditChain::Report AuditChain::audit(clsDataAccess& db, std::optional<qint64> idMovimento,
                                     const QString& anchor) {
    QMap<QString, QString> seals;
    if (!anchor.isEmpty())
        seals.insert(anchor, QString());
    Report r = scan(db, idMovimento, seals);
    r.anchorFound = r.sealsMissing.isEmpty();
    if (!r.anchorFound)
        r.problems << QStringLiteral("O hash guardado no encerramento do movimento (%1) não está "
                                     "na cadeia: ela foi refeita depois do encerramento.")
                          .arg(anchor);
    r.ok = r.problems.isEmpty();
    return r;
}

AuditChain::Report AuditChain::audit(clsDataAccess& db, const QMap<QString, QString>& seals) {
    Report r = scan(db, std::nullopt, seals);
    for (const QString& day : r.sealsMissing)
        r.problems << QStringLiteral("O selo do dia %1 (%2) não está na cadeia: ela foi refeita "
                                     "depois do encerramento.")
                          .arg(day, seals.key(day));
    r.ok = r.problems.isEmpty();
    return r;
}

AuditChain::Report AuditChain::scan(clsDataAccess& db, std::optional<qint64> idMovimento,
                                    const QMap<QString, QString>& seals) {
    Audit a(db, idMovimento, seals);
    if (!a.readChain())
        return a.finish(); // only why the chain could not be read
    a.compareTables();
    a.changedAndDeletedRows();
    return a.finish();
}
