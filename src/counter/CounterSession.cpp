#include "CounterSession.h"

#include "AppContext.h"
#include "BarcodeReader.h"
#include "CounterPrinter.h"
#include "DailyControlFile.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "OverdueHandler.h"
#include "TextFile.h"
#include "TypedLine.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QFile>

namespace {
const QString kAPagar = QStringLiteral("A Pagar");
const QString kAviso = QStringLiteral("Aviso");
} // namespace

CounterSession::CounterSession(AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_printer(printer), m_day(ctx, printer), m_paymentLabel(kAPagar) {}

void CounterSession::resetPayment() {
    m_paymentLabel = kAPagar;
    m_change = ChangeResult();
    m_tendered.clear();
}

bool CounterSession::append(const CustomerItem& item) {
    if (!m_day.loaded() || !m_day.aberto()) {
        m_ctx.dialogs.critical(kAviso, PaymentRecorder::kEncerrado);
        return false;
    }
    if (item.tipo < 1 || item.tipo > 99 || item.valor.isNegative()) {
        m_ctx.dialogs.warn(kAviso, QStringLiteral("Erro na Leitura de dados!!!"));
        return false;
    }
    m_list.append(item);
    resetPayment();
    return true;
}

ChangeResult CounterSession::tender(const QString& text) {
    ChangeResult r = computeChange(text, m_list);
    if (r.state == ChangeResult::State::AmountInvalid)
        return r;
    m_change = r;
    m_tendered = text;
    m_paymentLabel = r.label;
    return r;
}

bool CounterSession::mayRecord() const {
    // Recording is allowed before any amount is tendered and when the amount covers the total;
    // a customer who still owes must pay the rest first.
    return !m_list.isEmpty() && m_change.state != ChangeResult::State::Owes;
}

std::optional<QList<RecordedReceipt>> CounterSession::gravar() {
    if (m_list.isEmpty())
        return std::nullopt;
    if (!mayRecord()) {
        m_ctx.dialogs.warn(kAviso, QStringLiteral("O valor pago não cobre o total da conta!! ") +
                                       m_paymentLabel);
        return std::nullopt;
    }
    const auto rows = PaymentRecorder::record(m_ctx, m_day.movimento(), m_list);
    if (!rows)
        return std::nullopt; // the list stays for another try
    if (m_printer) {
        m_printer->documentos(*rows);
        if (m_ctx.settings.print_cupom == 1) {
            const auto paid = Money::parse(m_tendered);
            m_printer->cupom(*rows, (paid ? *paid : m_list.total()).format(),
                             m_change.difference.format());
        }
    }
    if (!DailyControlFile::appendReceipts(m_ctx, m_day.movimento().MDATA, *rows))
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro de Gravação!!!"));
    m_list.clear();
    resetPayment();
    return rows;
}

QString CounterSession::sumFilePath() const {
    QString p = QDir::fromNativeSeparators(
        m_ctx.option(QStringLiteral("Export"), QStringLiteral("caminho_soma")).trimmed());
    if (p.isEmpty())
        p = QStringLiteral("soma.txt");
    return QDir::isRelativePath(p) ? QDir(m_ctx.folder).filePath(p) : p;
}

bool CounterSession::salvarSoma() {
    const QString p = sumFilePath();
    QFile::remove(p);
    if (!TextFile::writeAll(p, m_list.toLines())) {
        m_ctx.dialogs.critical(kAviso, QStringLiteral("Erro de Gravação!!!"));
        return false;
    }
    m_ctx.dialogs.info(kAviso, QStringLiteral("Arquivo salvo com sucesso!!"));
    return true;
}

bool CounterSession::carregarSoma() {
    const QStringList lines = TextFile::readLines(sumFilePath());
    CustomerList loaded;
    if (lines.isEmpty() || !CustomerList::fromLines(lines, loaded) || loaded.isEmpty()) {
        m_ctx.dialogs.info(kAviso, QStringLiteral("Não há dados!!"));
        return false;
    }
    m_list = loaded;
    resetPayment();
    m_ctx.dialogs.info(kAviso, QStringLiteral("Arquivo carregado com sucesso!!"));
    return true;
}

QList<CounterSession::Lancado> CounterSession::lancados() {
    QList<Lancado> out;
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT Recebimentos.IDRECEBE, Recebimentos.AUTENTICA, CodBarra.DESCRICAO, "
                       "Recebimentos.VALOR "
                       "FROM Recebimentos, CodBarra WHERE Recebimentos.TIPO = CodBarra.IDCOD AND "
                       "Recebimentos.IDMOVIMENTO = ? ORDER BY Recebimentos.IDRECEBE DESC"),
        {m_day.movimento().ID});
    if (!rs)
        return out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({static_cast<qint32>(r.integer(QStringLiteral("IDRECEBE"))),
                    static_cast<qint16>(r.integer(QStringLiteral("AUTENTICA"))),
                    r.text(QStringLiteral("DESCRICAO")), r.money(QStringLiteral("VALOR"))});
    return out;
}

QString CounterSession::lancadosHeading() const {
    return QStringLiteral("Caixa dia: ") +
           m_ctx.workingDate.toString(QStringLiteral("dd - MM - yyyy"));
}

CounterSession::ReadResult CounterSession::ler(const QString& code) {
    ReadResult r;
    if (!m_day.loaded() || !m_day.aberto()) {
        m_ctx.dialogs.critical(kAviso, PaymentRecorder::kEncerrado);
        r.resultado = QStringLiteral("encerrado");
        r.mensagens << PaymentRecorder::kEncerrado;
        return r;
    }
    BarcodeReader reader(m_ctx);
    if (networkAlive)
        reader.networkAlive = networkAlive;
    const ReadingDecision d =
        reader.Leitura_codigo_barras(code, m_ctx.workingDate, m_list.barcodes());
    r.clearField = d.clearField;
    r.clearKind = d.clearKind;
    r.showNetworkLabel = d.showNetworkLabel;
    r.networkChecked = d.networkChecked;
    r.resultado = d.resultado();
    r.mensagens = d.mensagens;
    if (d.outcome != ReadingDecision::Outcome::Aceito)
        return r;
    CustomerItem item;
    item.tipo = d.idcod;
    item.descricao = d.descricao;
    item.codbarra = code;
    switch (d.route) {
    case ReadingDecision::Route::Febraban:
        r.accepted = Pagto_febraban(item, d.vencimentoTexto, d.valorTexto, d.juros, r);
        break;
    case ReadingDecision::Route::Cnab:
        r.accepted = Pagto_cnab(item, d.vencimento, d.valorTexto, d.juros, r);
        break;
    case ReadingDecision::Route::Diversos:
        r.accepted = Pagto_diversos(item, d.vencimento, d.valorTexto);
        break;
    case ReadingDecision::Route::None:
        break;
    }
    r.clearField = true;
    if (!r.accepted && r.resultado == QLatin1String("aceito"))
        r.resultado = QStringLiteral("erro");
    return r;
}

CounterSession::ReadResult CounterSession::lerLinha(const QString& line) {
    const TypedLine::Result t = TypedLine::toBarcode(line);
    if (!t.ok()) {
        m_ctx.dialogs.critical(kAviso, t.erro);
        ReadResult r;
        r.resultado = QStringLiteral("linha");
        r.mensagens << t.erro;
        return r;
    }
    return ler(t.barcode);
}

bool CounterSession::Pagto_febraban(CustomerItem item, const QString& vencimento,
                                    const QString& valor, const QString& juros, ReadResult& r) {
    const auto due = DateUtil::parseBr(vencimento);
    if (!due)
        return false;
    return addWithCharges(item, *due, valor, juros, r, QStringLiteral("Função Pagto_febraban"));
}

bool CounterSession::Pagto_cnab(CustomerItem item, const QDate& vencimento, const QString& valor,
                                const QString& juros, ReadResult& r) {
    if (!vencimento.isValid())
        return Pagto_diversos(item, vencimento, valor); // factor 0000: no due date, never overdue
    return addWithCharges(item, vencimento, valor, juros, r, QStringLiteral("Função Pagto_cnab"));
}

bool CounterSession::Pagto_diversos(CustomerItem item, const QDate& vencimento,
                                    const QString& valor) {
    const auto v = Money::parse(valor);
    if (!v)
        return false;
    item.valor = item.valorOriginal = *v;
    item.vencimento = vencimento.isValid() ? DateUtil::br(vencimento) : QString();
    return append(item);
}

bool CounterSession::addWithCharges(CustomerItem item, const QDate& vencimento,
                                    const QString& valor, const QString& juros, ReadResult& r,
                                    const QString& routine) {
    const auto v = Money::parse(valor);
    if (!v)
        return false;
    const auto o =
        OverdueHandler::handle(m_ctx, vencimento, *v, juros == QLatin1String("SIM"), routine);
    r.encargos = o.encargos;
    if (o.refused) {
        r.resultado = QStringLiteral("recusada");
        r.clearKind = true;
        r.mensagens << OverdueHandler::kLinhasGuia.join(QLatin1Char(' '));
        return false;
    }
    if (o.failed)
        return false;
    item.valorOriginal = *v;
    item.valor = o.encargos.total;
    item.juros = o.encargos.juros;
    item.multa = o.encargos.multa;
    item.encargos = o.encargos;
    item.vencimento = DateUtil::br(vencimento);
    return append(item);
}

QList<QPair<int, QString>> CounterSession::kinds() {
    QList<QPair<int, QString>> out;
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(QStringLiteral(
        "SELECT IDCOD, DESCRICAO FROM CodBarra WHERE IDCOD < 100 ORDER BY DESCRICAO"));
    if (!rs)
        return out;
    for (Recordset r = *rs; !r.EOF_(); r.moveNext())
        out.append({int(r.integer(QStringLiteral("IDCOD"))), r.text(QStringLiteral("DESCRICAO"))});
    return out;
}

bool CounterSession::adicionarDigitado(int idcod, const QString& descricao, const QString& valor) {
    const auto v = Money::parse(valor);
    if (valor.count(QLatin1Char(',')) > 1 || !v || v->isNegative() || v->isZero()) {
        m_ctx.dialogs.warn(kAviso, QStringLiteral("Um valor deve ser informado!!"));
        return false;
    }
    CustomerItem item;
    item.tipo = idcod;
    item.descricao = descricao;
    item.valor = *v;
    item.valorOriginal = *v;
    return append(item);
}

CounterSession::ReadResult CounterSession::somaAvulso(const OneOffItem& in) {
    ReadResult r;
    const auto fail = [&](const QString& entry) {
        const QString text = entry + QStringLiteral(" - Erro na Soma Avulso!!");
        m_ctx.dialogs.critical(kAviso, text);
        r.resultado = QStringLiteral("erro");
        r.mensagens << text;
        return r;
    };
    const auto valor = Money::parse(in.valor);
    if (in.valor.count(QLatin1Char(',')) > 1 || !valor || valor->isNegative() || valor->isZero())
        return fail(in.valor);
    const auto kinds = OneOffItem::kinds(m_ctx.db);
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [&](const auto& k) { return k.first == in.idcod; });
    if (kind == kinds.end())
        return fail(QString::number(in.idcod));
    // Rebuilt from "yyyyMMdd": day the last two characters, month the 5th and 6th, year the first
    // four.
    const QString ymd = in.vencimento;
    const auto due = ymd.isEmpty()
                         ? std::optional<QDate>(m_ctx.workingDate)
                         : DateUtil::parseBr(ymd.right(2) + QLatin1Char('/') + ymd.mid(4, 2) +
                                             QLatin1Char('/') + ymd.left(4));
    if (!due)
        return fail(ymd);
    const auto rs = m_ctx.db.SQLSelect_ReadOnly(
        QStringLiteral("SELECT PADRAO, JUROS FROM CodBarra WHERE IDCOD = ?"), {in.idcod});
    const bool juros =
        rs && rs->recordCount() == 1 && rs->text(QStringLiteral("JUROS")) == QLatin1String("S");
    CustomerItem item;
    item.tipo = in.idcod;
    item.descricao = kind->second;
    item.parcela = in.parcela;
    item.obs = in.obs;
    item.codbarra = clsRecebimentos::kSemCodigo;
    if (!juros) {
        item.valor = item.valorOriginal = *valor;
        item.vencimento = DateUtil::br(*due);
        r.accepted = append(item);
        r.resultado = r.accepted ? QStringLiteral("aceito") : QStringLiteral("erro");
        return r;
    }
    r.accepted = addWithCharges(item, *due, valor->format(), QStringLiteral("SIM"), r,
                                QStringLiteral("Função Soma_Avulso"));
    if (r.resultado.isEmpty())
        r.resultado = r.accepted ? QStringLiteral("aceito") : QStringLiteral("erro");
    return r;
}
