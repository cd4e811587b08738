#include "BankExport.h"
#include "SystemTexts.h"

#include "ActLog.h"
#include "AppContext.h"
#include "BankFileWriter.h"
#include "CheckDigits.h"
#include "Clock.h"
#include "DialogPort.h"
#include "Transaction.h"
#include "clsArquivoBanco.h"
#include "clsCodBarra.h"
#include "clsRecebimentos.h"
#include "clsSequenciaArquivo.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QThread>

QString BankExport::padrao(Arquivo a) {
    return a == Arquivo::Cnab ? QStringLiteral("C") : QStringLiteral("F");
}

bool BankExport::codigoBancoValido(const QString& codigo) {
    return codigo.size() == 3 && isAllDigits(codigo);
}

QString BankExport::recusaCodigoBanco(Arquivo a, const QString& digitado) {
    return a == Arquivo::Cnab || codigoBancoValido(digitado)
               ? QString()
               : SystemTexts::text(SystemText::CodigoBancoNaoInformado);
}

int BankExport::pausaTela(const AppContext& ctx) {
    bool ok = false;
    const int ms =
        ctx.option(QStringLiteral("Export"), QStringLiteral("pausa_registro")).toInt(&ok);
    return ok && ms >= 0 ? qMin(ms, 60000) : kPausaPadrao;
}

bool BankExport::cnabNaTela(const AppContext& ctx) {
    return ctx.option(QStringLiteral("Export"), QStringLiteral("cnab")) == QLatin1String("1");
}

bool BankExport::tipo(int idcod, Arquivo a, clsCodBarra& kind, Result& r) {
    if (!kind.SQLSelect(idcod)) {
        falha(r, SystemTexts::text(SystemText::TipoNaoEncontradoArquivo).arg(idcod));
        return false;
    }
    const auto wanted = a == Arquivo::Cnab ? GuideKind::Padrao::Cnab : GuideKind::Padrao::Febraban;
    if (kind.kind().padrao != wanted) {
        falha(r, SystemTexts::text(SystemText::TipoDeOutroArquivo)
                     .arg(idcod)
                     .arg(kind.DESCRICAO, a == Arquivo::Cnab
                                              ? QStringLiteral("boleto bancário, padrão C")
                                              : QStringLiteral("guia Febraban, padrão F")));
        return false;
    }
    return true;
}

std::optional<QString> BankExport::pasta(AppContext& ctx, const QString& configured,
                                         const QString& key, Result& r) {
    QString folder = QDir::fromNativeSeparators(configured.trimmed());
    if (folder.isEmpty())
        folder = ctx.folder;
    else if (QDir::isRelativePath(folder))
        folder = QDir(ctx.folder).filePath(folder);
    if (!QFileInfo(folder).isDir()) {
        falha(r, SystemTexts::text(SystemText::PastaExportacaoNaoExiste)
                     .arg(QDir::toNativeSeparators(folder), key));
        return std::nullopt;
    }
    return folder;
}

QString BankExport::parteDoNome(const QString& text) {
    QString s = text;
    for (QChar& c : s)
        if (QStringLiteral("\\/:*?\"<>|").contains(c) || c.unicode() < 32)
            c = QLatin1Char('_');
    return s;
}

QString BankExport::ajusta(const QString& text, int width) {
    return text.left(width).leftJustified(width, QLatin1Char(' '));
}

QString BankExport::numero(qint64 n, int width) {
    return QString::number(n).rightJustified(width, QLatin1Char('0'));
}

bool BankExport::codigoValido(const QString& codbarra) {
    return codbarra.size() == 44 && isAllDigits(codbarra) &&
           codbarra != clsRecebimentos::kSemCodigo;
}

void BankExport::registro(Result& r, bool built, const QString& record, const QString& failure,
                          QByteArray& into) {
    if (built) {
        into += record.toLatin1();
        into += "\r\n";
        return;
    }
    ++r.falhas;
    if (r.erros.contains(failure))
        return;
    r.avisos << SystemTexts::notice(SystemText::ErroGerarArquivoBanco).with(failure);
    r.erros << failure;
}

std::optional<QList<clsRecebimentos>> BankExport::inicia(AppContext& ctx, const Request& rq,
                                                         BankFileWriter& file, Result& r) {
    if (OutputPath::isGuarded(file.finalPath(), ctx.ownFiles())) {
        falha(r, ctx.outputProblem(file.finalPath()));
        return std::nullopt;
    }
    QString error;
    if (!file.begin(&error)) {
        falha(r, error);
        return std::nullopt;
    }
    r.arquivo = file.finalPath();
    auto rows = clsRecebimentos::listarExportacao(ctx.db, rq.idMovimento, rq.idcod, 0);
    if (!rows)
        falha(r, SystemTexts::text(SystemText::ErroGerarArquivoBanco));
    return rows;
}

std::function<bool(const QString&)> BankExport::registrado(AppContext& ctx) {
    return [&ctx](const QString& name) {
        // A name that cannot be checked is treated as taken: the run picks another.
        return clsArquivoBanco::registrado(ctx.db, name).value_or(true);
    };
}

bool BankExport::conclui(AppContext& ctx, const Request& rq, Arquivo a, const QString& banco,
                         BankFileWriter& file, const QList<clsRecebimentos>& rows,
                         const std::function<std::optional<QList<QByteArray>>(int nsa)>& numera,
                         Result& r) {
    QString error;
    int nsa = 0;
    {
        Transaction tx(ctx.db);
        std::optional<QList<QByteArray>> bytes;
        if (tx.ok() && a == Arquivo::Cnab) {
            const auto n = clsSequenciaArquivo::proximo(ctx.db, banco);
            nsa = n.value_or(0);
            if (n)
                bytes = numera(nsa);
        } else if (tx.ok()) {
            bytes = numera(0);
        }
        // A write that fails keeps the disk's answer ("Disco cheio: ...") as the message.
        if (!bytes)
            error = SystemTexts::text(SystemText::ErroNumerarArquivo);
        if (bytes && file.write(*bytes, &error)) {
            clsArquivoBanco::Arquivo run;
            run.arquivo = QFileInfo(file.finalPath()).fileName();
            run.padrao = padrao(a);
            run.banco = banco;
            run.nsa = nsa;
            run.idMovimento = rq.idMovimento;
            run.idcod = rq.idcod;
            run.momento = ctx.clock.now();
            run.usuario = ctx.userName;
            run.registros = r.registros;
            run.total = r.total;
            QList<qint32> ids;
            for (const clsRecebimentos& row : rows)
                ids << row.IDRECEBE;
            if (!clsArquivoBanco::registrar(ctx.db, run, ids) ||
                !ActLog::gravar(ctx, Act::ArquivosBanco, QStringLiteral("ArquivosBanco"), run.id) ||
                !tx.commit())
                error = SystemTexts::text(SystemText::ErroRegistrarArquivo).arg(ctx.db.lastError());
        }
    }
    if (error.isEmpty() && !file.publish(&error))
        error = error.isEmpty() ? SystemTexts::text(SystemText::ErroGerarArquivoBanco) : error;
    if (!error.isEmpty()) {
        r.registros = 0;
        falha(r, error);
        return false;
    }
    r.nsa = nsa;
    r.arquivo = file.finalPath();
    return true;
}

void BankExport::falha(Result& r, const QString& text) {
    r.avisos << SystemTexts::notice(SystemText::ErroGerarArquivoBanco).with(text);
    r.erros << text;
    r.ok = false;
}

void BankExport::pausa(int ms) {
    if (ms <= 0)
        return;
    const QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(quint64(qBound(qint64(0), deadline.remainingTime(), qint64(10))));
    }
}
