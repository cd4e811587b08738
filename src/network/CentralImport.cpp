#include "CentralImport.h"

#include "CentralLink.h"
#include "EarlierDatabase.h"
#include "ErrorLog.h"
#include "Transaction.h"
#include "clsImportacaoRede.h"
#include "clsRecebimentos.h"
#include "clsRecebimentos1.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

using Resultado = CentralImport::Resultado;

bool isSqlite(QFile& f) {
    const QByteArray head = f.peek(16);
    return head == QByteArray("SQLite format 3\0", 16);
}

QString hashOf(QFile& f) {
    QCryptographicHash h(QCryptographicHash::Sha256);
    f.seek(0);
    h.addData(&f);
    f.seek(0);
    return QString::fromLatin1(h.result().toHex());
}

// One batch: its valid codes and what the rest of its lines were.
struct Lote {
    QStringList codigos;
    qint64 lidos = 0;
    qint64 invalidos = 0;
    qint64 ignorados = 0;
    qint64 posicao = 0; // where the next batch starts
    QStringList exemplos;
};

void classify(const QString& code, Lote& l) {
    static const QRegularExpression digits(QStringLiteral("^\\d{44}$"));
    ++l.lidos;
    if (!digits.match(code).hasMatch()) {
        ++l.invalidos;
        if (l.exemplos.size() < CentralImport::kExemplos)
            l.exemplos << code.left(60);
    } else if (!clsRecebimentos::isUniqueCode(code)) {
        ++l.ignorados;
    } else {
        l.codigos << code;
    }
}

// The first field of a line (CSV with ; , or tab), without quotes and blanks.
QString fieldOf(const QByteArray& line) {
    static const QRegularExpression sep(QStringLiteral("[;,\\t]"));
    QString t = QString::fromLatin1(line).trimmed();
    t = t.section(sep, 0, 0).trimmed();
    if (t.size() >= 2 && t.startsWith(QLatin1Char('"')) && t.endsWith(QLatin1Char('"')))
        t = t.mid(1, t.size() - 2).trimmed();
    return t;
}

Lote textBatch(QFile& f, int size) {
    Lote l;
    while (l.codigos.size() < size && !f.atEnd()) {
        const QByteArray line = f.readLine();
        const QString code = fieldOf(line);
        if (!code.isEmpty())
            classify(code, l);
    }
    l.posicao = f.pos();
    return l;
}

std::optional<Lote> dbBatch(clsDataAccess& earlier, qint64 after, int size) {
    const auto rows = EarlierDatabase::codigos(earlier, after, size);
    if (!rows)
        return std::nullopt;
    Lote l;
    l.posicao = after;
    for (const auto& [id, code] : *rows) {
        classify(code.trimmed(), l);
        l.posicao = id;
    }
    return l;
}

// The batch and where the import stands, in one central transaction.
bool commitBatch(clsDataAccess& central, const Lote& l, const QString& origem,
                 const QString& guiche, clsImportacaoRede& estado) {
    Transaction tx(central);
    if (!tx.ok())
        return false;
    const auto inserted = clsRecebimentos1::importar(central, l.codigos, origem, guiche);
    if (!inserted)
        return false;
    clsImportacaoRede next = estado;
    next.POSICAO = l.posicao;
    next.LIDOS += l.lidos;
    next.IMPORTADOS += *inserted;
    next.JA_EXISTENTES += l.codigos.size() - *inserted;
    next.INVALIDOS += l.invalidos;
    next.IGNORADOS += l.ignorados;
    if (!next.gravar() || !tx.commit())
        return false;
    estado = next;
    return true;
}

// Where the import of this file stands at the central: a new one when it was never started or
// was finished. Answers the origin its rows are written with, empty when the central could not
// be read.
QString readState(clsDataAccess& central, QFile& f, const QString& caminho,
                  clsImportacaoRede& estado, Resultado& r) {
    const QString chave = hashOf(f);
    const auto found = estado.SQLSelect(chave);
    if (!found) {
        r.erro = central.lastError();
        return {};
    }
    if (!*found || estado.CONCLUIDA) {
        estado = clsImportacaoRede(central); // a new import (again, if it was finished)
        estado.CHAVE = chave;
    }
    r.retomada = *found && !estado.CONCLUIDA && estado.LIDOS > 0;
    estado.ARQUIVO = QFileInfo(caminho).fileName();
    return QStringLiteral("importacao:") + chave.left(16);
}

// Where the codes come from: an earlier caixa.db (`earlier`, opened on it) or the text file.
struct Fonte {
    QFile& f;
    clsDataAccess& earlier;
    bool sqlite = false;
    qint64 total = 0; // receipts, or the file's bytes
    QString guiche;
};

// Opens the source where the import stands (`posicao`); false with `erro` when it cannot.
bool openSource(Fonte& s, const QString& caminho, qint64 posicao, QString& erro) {
    if (!s.sqlite) {
        if (s.f.seek(posicao))
            return true;
        erro = QStringLiteral("Não foi possível continuar a leitura de %1.").arg(caminho);
        return false;
    }
    s.f.close();
    const auto n = s.earlier.open(DbConfig::sqlite(caminho), clsDataAccess::OpenMode::ReadOnly)
                       ? EarlierDatabase::contar(s.earlier)
                       : std::nullopt;
    if (!n) {
        erro =
            QStringLiteral("%1 não é um caixa.db legível: %2").arg(caminho, s.earlier.lastError());
        return false;
    }
    s.total = *n;
    s.guiche = EarlierDatabase::guiche(s.earlier);
    return true;
}

// Batch after batch until the source ends (r.ok) or one is refused (r.erro). False when the
// earlier database could not be read: the result then carries no counts.
bool importBatches(clsDataAccess& central, Fonte& s, const QString& origem,
                   clsImportacaoRede& estado, const CentralImport::Progresso& progresso, int lote,
                   Resultado& r) {
    qint64 feitos = s.sqlite ? estado.LIDOS : estado.POSICAO;
    for (;;) {
        std::optional<Lote> l = s.sqlite ? dbBatch(s.earlier, estado.POSICAO, lote)
                                         : std::optional<Lote>(textBatch(s.f, lote));
        if (!l) {
            r.erro = s.earlier.lastError();
            return false;
        }
        const bool fim = s.sqlite ? l->lidos < lote : s.f.atEnd();
        clsImportacaoRede antes = estado;
        estado.CONCLUIDA = fim;
        if (!commitBatch(central, *l, origem, s.guiche, estado)) {
            r.erro = QStringLiteral("A central não gravou o lote: %1").arg(central.lastError());
            estado = antes;
            return true;
        }
        for (const QString& e : l->exemplos)
            if (r.exemplosInvalidos.size() < CentralImport::kExemplos)
                r.exemplosInvalidos << e;
        feitos = s.sqlite ? feitos + l->lidos : l->posicao;
        if (progresso)
            progresso(qMin(feitos, s.total), s.total);
        if (fim) {
            r.ok = true;
            return true;
        }
    }
}

} // namespace

CentralImport::Resultado CentralImport::importar(CentralLink& link, ErrorLog& log,
                                                 const QString& caminho, const Progresso& progresso,
                                                 int lote) {
    Resultado r;
    QFile f(caminho);
    if (!QFileInfo(caminho).isFile() || !f.open(QIODevice::ReadOnly)) {
        r.erro = QStringLiteral("Não foi possível ler %1.").arg(caminho);
        return r;
    }
    clsDataAccess& central = link.db();
    // A batch waits for the counters' publications instead of giving up.
    central.setLockWait(clsDataAccess::kLockWaitMs, clsDataAccess::kLockAttempts);
    clsImportacaoRede estado(central);
    const QString origem = readState(central, f, caminho, estado, r);
    if (origem.isEmpty())
        return r;
    clsDataAccess earlier(log);
    Fonte fonte{f, earlier, isSqlite(f), f.size(), {}};
    if (!openSource(fonte, caminho, estado.POSICAO, r.erro))
        return r;
    if (!importBatches(central, fonte, origem, estado, progresso, lote, r))
        return r;
    r.lidos = estado.LIDOS;
    r.importados = estado.IMPORTADOS;
    r.jaExistentes = estado.JA_EXISTENTES;
    r.invalidos = estado.INVALIDOS;
    r.ignorados = estado.IGNORADOS;
    return r;
}
