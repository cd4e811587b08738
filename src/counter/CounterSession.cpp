#include "CounterSession.h"

#include "AppContext.h"
#include "BarcodeReader.h"
#include "CounterPrinter.h"
#include "DailyControlFile.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "OverdueHandler.h"
#include "SystemTexts.h"
#include "TextFile.h"
#include "TypedLine.h"
#include "clsCodBarra.h"
#include "clsRecebimentos.h"

#include <QDir>
#include <QFile>

namespace {
const QString kAPagar = QStringLiteral("A Pagar");
} // namespace

CounterSession::CounterSession(AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_printer(printer), m_day(ctx, printer), m_paymentLabel(kAPagar) {}

void CounterSession::resetPayment() {
    m_paymentLabel = kAPagar;
    m_change = ChangeResult();
    m_tendered.reset();
}

bool CounterSession::append(const CustomerItem& item) {
    if (!m_day.loaded() || !m_day.aberto()) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::PagamentoDiaEncerrado));
        return false;
    }
    if (item.tipo < 1 || item.tipo > 99 || item.valor.isNegative()) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroLeituraDados));
        return false;
    }
    m_list.append(item);
    resetPayment();
    return true;
}

ChangeResult CounterSession::tender(Money paid) {
    ChangeResult r = computeChange(paid, m_list);
    if (r.state == ChangeResult::State::AmountInvalid)
        return r;
    m_change = r;
    m_tendered = paid;
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
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ValorPagoNaoCobre).arg(m_paymentLabel));
        return std::nullopt;
    }
    const auto rows = PaymentRecorder::record(m_ctx, m_day.movimento(), m_list);
    if (!rows)
        return std::nullopt; // the list stays for another try
    m_ultimo = *rows;
    forgetSumFileIfRecorded(*rows);
    std::optional<PrinterMessage> problem;
    if (m_printer) {
        m_printer->documentos(*rows, &problem);
        if (m_ctx.settings.imprimeCupom())
            m_printer->cupom(*rows, m_tendered.value_or(m_list.total()).format(),
                             m_change.difference.format());
    }
    // One message per customer: the record, and why its documents were not stamped.
    if (problem) {
        Notice n = SystemTexts::notice(SystemText::RegistroGravadoComAviso).arg(problem->text);
        n.icon = problem->icon;
        tell(m_ctx.dialogs, n);
    } else {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::RegistroGravado));
    }
    QList<DailyControlFile::Receipt> lines;
    for (const RecordedReceipt& r : *rows)
        lines.append({r.autentica, r.momento, r.item.kindColumn(), r.item.valor, r.item.codbarra});
    if (!DailyControlFile::appendReceipts(m_ctx, m_day.movimento().MDATA, lines))
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroGravacao));
    m_list.clear();
    m_removidos.clear();
    resetPayment();
    return rows;
}

QString CounterSession::exportPath(const QString& key, const QString& fallback) const {
    QString p = QDir::fromNativeSeparators(m_ctx.option(QStringLiteral("Export"), key).trimmed());
    if (p.isEmpty())
        p = fallback;
    return QDir::isRelativePath(p) ? QDir(m_ctx.folder).filePath(p) : p;
}

QString CounterSession::sumFilePath() const {
    return exportPath(QStringLiteral("caminho_soma"), QStringLiteral("soma.txt"));
}

QString CounterSession::removedFilePath() const {
    return exportPath(QStringLiteral("caminho_remove_item"), QStringLiteral("removidos.txt"));
}

bool CounterSession::removerUltimo() {
    if (m_list.isEmpty())
        return false;
    m_removidos.append(m_list.at(m_list.size() - 1));
    m_list.removeLast();
    resetPayment();
    return true;
}

CustomerList::RemoveResult CounterSession::removerNumero(const QString& answer) {
    const CustomerList before = m_list;
    const auto r = m_list.removeByNumber(answer);
    if (r == CustomerList::RemoveResult::Removed) {
        m_removidos.append(before.at(answer.trimmed().toInt() - 1));
        resetPayment();
    }
    return r;
}

void CounterSession::limparSoma() {
    for (const CustomerItem& it : m_list.items())
        m_removidos.append(it);
    m_list.clear();
    resetPayment();
}

bool CounterSession::salvarSoma() {
    const QString p = sumFilePath();
    QFile::remove(p);
    QFile::remove(removedFilePath());
    if (!TextFile::writeAll(p, m_list.toLines()) ||
        !TextFile::writeAll(removedFilePath(), m_removidos.toLines())) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ErroGravacao));
        return false;
    }
    m_sumFile = m_list.items();
    tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ArquivoSalvo));
    return true;
}

bool CounterSession::carregarSoma() {
    const QStringList lines = TextFile::readLines(sumFilePath());
    CustomerList loaded;
    if (lines.isEmpty() || !CustomerList::fromLines(lines, loaded) || loaded.isEmpty()) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::NaoHaDados));
        return false;
    }
    // Every loaded code is refused as a scan would be: a code already on the list or already
    // received stays out.
    BarcodeReader reader(m_ctx);
    if (networkAlive)
        reader.networkAlive = networkAlive;
    CustomerList accepted;
    QStringList refused;
    for (const CustomerItem& it : loaded.items()) {
        const auto why = reader.duplicado(it.codbarra, accepted.barcodes());
        if (!why) {
            accepted.append(it);
            continue;
        }
        refused << QStringLiteral("%1 %2: %3")
                       .arg(it.kindColumn(), it.codbarra, BarcodeReader::textoDuplicado(*why));
    }
    CustomerList removed;
    CustomerList::fromLines(TextFile::readLines(removedFilePath()), removed);
    m_list = accepted;
    m_removidos = removed;
    m_sumFile = loaded.items();
    resetPayment();
    if (!refused.isEmpty())
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ItensNaoCarregados)
                                .arg(refused.join(QLatin1Char('\n'))));
    if (accepted.isEmpty())
        return false;
    tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ArquivoCarregado));
    return true;
}

void CounterSession::forgetSumFileIfRecorded(const QList<RecordedReceipt>& rows) {
    if (m_sumFile.isEmpty())
        return;
    QList<RecordedReceipt> left = rows;
    for (const CustomerItem& it : m_sumFile) {
        const auto same = std::find_if(left.begin(), left.end(), [&](const RecordedReceipt& r) {
            return r.item.codbarra == it.codbarra && r.item.tipo == it.tipo &&
                   r.item.valor == it.valor;
        });
        if (same == left.end())
            return; // the file still holds something not recorded
        left.erase(same);
    }
    TextFile::writeAll(sumFilePath(), {});
    TextFile::writeAll(removedFilePath(), {});
    m_sumFile.clear();
}

ReceiptStamps::Outcome CounterSession::reautenticarUltimo(ReceiptStamps::Repetir repetir) {
    if (m_ultimo.isEmpty()) {
        return ReceiptStamps::Outcome::naoEncontrado(
            SystemTexts::text(SystemText::NenhumPagamentoSessao));
    }
    return ReceiptStamps(m_ctx, m_printer).autenticar(m_ultimo, repetir);
}

ReceiptStamps::Outcome CounterSession::reautenticar(int autentica, ReceiptStamps::Repetir repetir) {
    clsRecebimentos r(m_ctx.db);
    RecordedReceipt row;
    if (!m_day.loaded() ||
        !r.SQLSelectAutentica(m_day.movimento().ID, autentica, &row.item.descricao)) {
        return ReceiptStamps::Outcome::naoEncontrado(
            SystemTexts::text(SystemText::AutenticacaoNaoEncontrada)
                .arg(autentica, 4, 10, QLatin1Char('0')));
    }
    row.idrecebe = r.IDRECEBE;
    row.autentica = r.AUTENTICA;
    row.item.tipo = r.TIPO;
    row.item.valor = r.VALOR;
    row.item.codbarra = r.CODBARRA;
    return ReceiptStamps(m_ctx, m_printer).autenticar({row}, repetir);
}

ReceiptStamps::Outcome CounterSession::autenticarPendentes() {
    return ReceiptStamps(m_ctx, m_printer).autenticarPendentes(m_day.movimento().ID);
}

std::optional<QList<clsAutenticacoes::Pendente>> CounterSession::pendentes() {
    if (!m_day.loaded())
        return QList<clsAutenticacoes::Pendente>{};
    return ReceiptStamps::pendentes(m_ctx, m_day.movimento().ID);
}

QList<clsRecebimentos::Lancado> CounterSession::lancados() {
    return clsRecebimentos::listarDoMovimento(m_ctx.db, m_day.movimento().ID)
        .value_or(QList<clsRecebimentos::Lancado>{});
}

QList<clsRecebimentos::Lancado> CounterSession::lancados(qint32 antesDe, int limite) {
    return clsRecebimentos::listarDoMovimento(m_ctx.db, m_day.movimento().ID, antesDe, limite)
        .value_or(QList<clsRecebimentos::Lancado>{});
}

std::optional<clsRecebimentos::Resumo> CounterSession::resumoLancados() {
    return clsRecebimentos::resumoDoMovimento(m_ctx.db, m_day.movimento().ID);
}

QString CounterSession::lancadosHeading() const {
    return QStringLiteral("Caixa dia: ") +
           m_ctx.workingDate.toString(QStringLiteral("dd - MM - yyyy"));
}

CounterSession::ReadResult CounterSession::ler(const QString& code) {
    ReadResult r;
    m_pending.reset();
    if (!m_day.loaded() || !m_day.aberto()) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::PagamentoDiaEncerrado));
        r.resultado = Outcome::Encerrado;
        r.mensagens << SystemTexts::text(SystemText::PagamentoDiaEncerrado);
        r.clearField = true; // the next scan must not be glued to this one
        return r;
    }
    BarcodeReader reader(m_ctx);
    if (networkAlive)
        reader.networkAlive = networkAlive;
    reader.kindsFilled = kindsFilled;
    const ReadingDecision d =
        reader.Leitura_codigo_barras(code, m_ctx.workingDate, m_list.barcodes());
    r.clearField = d.clearField;
    r.clearKind = d.clearKind;
    r.showNetworkLabel = d.showNetworkLabel;
    r.networkChecked = d.networkChecked;
    r.resultado = d.outcome;
    r.mensagens = d.mensagens;
    if (d.outcome != Outcome::Aceito)
        return r;
    CustomerItem item;
    item.tipo = d.idcod;
    item.descricao = d.descricao;
    item.codbarra = code;
    switch (d.route) {
    case ReadingDecision::Route::Febraban:
        r.accepted = Pagto_febraban(item, d.vencimento, d.valor, d.juros, r);
        break;
    case ReadingDecision::Route::Cnab:
        r.accepted = Pagto_cnab(item, d.vencimento, d.valor, d.juros, r);
        break;
    case ReadingDecision::Route::Diversos:
        r.accepted = Pagto_diversos(item, d.vencimento, d.valor);
        break;
    case ReadingDecision::Route::None:
        break;
    }
    if (r.precisaConsentimento)
        return r;
    r.clearField = true;
    if (!r.accepted && r.resultado == Outcome::Aceito)
        r.resultado = Outcome::Erro;
    return r;
}

bool CounterSession::pareceLinhaDigitavel(const QString& text) {
    int digits = 0;
    for (const QChar c : text.trimmed()) {
        if (c.isDigit())
            ++digits;
        else if (c != QLatin1Char('.') && c != QLatin1Char(' ') && c != QLatin1Char('-'))
            return false;
    }
    return digits == 47 || digits == 48;
}

bool CounterSession::pareceInicioDeLinha(const QString& text) {
    int digits = 0;
    for (const QChar c : text) {
        if (c.isDigit())
            ++digits;
        else if (c != QLatin1Char('.') && c != QLatin1Char(' ') && c != QLatin1Char('-'))
            return false;
    }
    return digits >= 11;
}

CounterSession::ReadResult CounterSession::lerLinha(const QString& line) {
    const TypedLine::Result t = TypedLine::toBarcode(line);
    if (!t.ok()) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), t.erro);
        ReadResult r;
        r.resultado = Outcome::Linha;
        r.mensagens << t.erro;
        return r;
    }
    return ler(t.barcode);
}

bool CounterSession::Pagto_febraban(CustomerItem item, const QDate& vencimento, Money valor,
                                    bool juros, ReadResult& r) {
    return addWithCharges(item, vencimento, valor, juros, r,
                          QStringLiteral("Função Pagto_febraban"));
}

bool CounterSession::Pagto_cnab(CustomerItem item, const QDate& vencimento, Money valor, bool juros,
                                ReadResult& r) {
    if (!vencimento.isValid())
        return Pagto_diversos(item, vencimento, valor); // factor 0000: no due date, never overdue
    return addWithCharges(item, vencimento, valor, juros, r, QStringLiteral("Função Pagto_cnab"));
}

bool CounterSession::Pagto_diversos(CustomerItem item, const QDate& vencimento, Money valor) {
    item.valor = item.valorOriginal = valor;
    item.vencimento = vencimento;
    return append(item);
}

bool CounterSession::addWithCharges(CustomerItem item, const QDate& vencimento, Money valor,
                                    bool juros, ReadResult& r, const QString& routine) {
    Pending p{item, vencimento, valor, juros, routine};
    QDate efetivo;
    if (OverdueHandler::vencida(m_ctx, vencimento, &efetivo)) {
        m_pending = p;
        r.precisaConsentimento = true;
        r.vencimento = vencimento;
        r.valor = valor;
        return false;
    }
    Encargos e;
    e.vencimento = efetivo;
    e.valor = e.total = valor;
    r.encargos = e;
    item.valor = item.valorOriginal = valor;
    item.encargos = e;
    item.vencimento = vencimento;
    return append(item);
}

bool CounterSession::addCharged(const Pending& p, ReadResult& r) {
    const auto charges = OverdueHandler::cobrar(m_ctx, p.vencimento, p.valor, p.juros, p.routine);
    if (charges.failed)
        return false;
    r.encargos = charges.encargos;
    CustomerItem item = p.item;
    item.valorOriginal = p.valor;
    item.valor = charges.encargos.total;
    item.juros = charges.encargos.juros;
    item.multa = charges.encargos.multa;
    item.encargos = charges.encargos;
    item.vencimento = p.vencimento;
    return append(item);
}

CounterSession::ReadResult CounterSession::continuar(bool consentimento) {
    ReadResult r;
    if (!m_pending)
        return r;
    const Pending p = *m_pending;
    m_pending.reset();
    r.clearField = true;
    if (!consentimento) {
        r.resultado = Outcome::Recusada;
        r.clearKind = true;
        r.mensagens << OverdueHandler::kLinhasGuia.join(QLatin1Char(' '));
        return r;
    }
    r.accepted = addCharged(p, r);
    r.resultado = r.accepted ? Outcome::Aceito : Outcome::Erro;
    return r;
}

GuideKinds CounterSession::kinds() {
    return clsCodBarra::listar(m_ctx.db, clsCodBarra::Lista::Entrada).value_or(GuideKinds{});
}

bool CounterSession::adicionarDigitado(int idcod, const QString& descricao,
                                       std::optional<Money> valor) {
    if (!valor || valor->isNegative() || valor->isZero()) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::ValorNaoInformado));
        return false;
    }
    CustomerItem item;
    item.tipo = idcod;
    item.descricao = descricao;
    item.valor = *valor;
    item.valorOriginal = *valor;
    return append(item);
}

CounterSession::ReadResult CounterSession::somaAvulso(const OneOffItem& in) {
    ReadResult r;
    m_pending.reset();
    const auto fail = [&](const QString& entry) {
        const QString text = OneOffItem::erroSoma(entry);
        m_ctx.dialogs.critical(SystemTexts::aviso(), text);
        r.resultado = Outcome::Erro;
        r.mensagens << text;
        return r;
    };
    if (in.valor.isNegative() || in.valor.isZero())
        return fail(in.valor.format());
    clsCodBarra kind(m_ctx.db);
    const auto offered = clsCodBarra::listar(m_ctx.db, clsCodBarra::Lista::Avulso);
    const bool isOffered =
        offered && std::any_of(offered->begin(), offered->end(),
                               [&](const GuideKind& k) { return k.idcod == in.idcod; });
    if (!isOffered || !kind.SQLSelect(in.idcod))
        return fail(QString::number(in.idcod));
    const QDate due = in.vencimento.isValid() ? in.vencimento : m_ctx.workingDate;
    CustomerItem item;
    item.tipo = in.idcod;
    item.descricao = kind.DESCRICAO;
    item.parcela = in.parcela;
    item.obs = in.obs;
    item.codbarra = clsRecebimentos::kSemCodigo;
    if (!kind.kind().juros) {
        item.valor = item.valorOriginal = in.valor;
        item.vencimento = due;
        r.accepted = append(item);
        r.resultado = r.accepted ? Outcome::Aceito : Outcome::Erro;
        return r;
    }
    r.accepted = addWithCharges(item, due, in.valor, true, r, QStringLiteral("Função Soma_Avulso"));
    if (!r.precisaConsentimento)
        r.resultado = r.accepted ? Outcome::Aceito : Outcome::Erro;
    return r;
}
