#include "ReceiptCorrections.h"

#include "AppContext.h"
#include "CashEntry.h"
#include "Clock.h"
#include "DayMovement.h"
#include "DialogPort.h"
#include "FileText.h"
#include "KindRegistry.h"
#include "NetworkOutbox.h"
#include "SystemTexts.h"
#include "Transaction.h"
#include "clsArquivoBanco.h"
#include "clsAtos.h"
#include "clsAutenticadora.h"
#include "clsCodBarra.h"

#include <QHash>
#include <QRegularExpression>
#include <map>

const QString ReceiptCorrections::kMotivoObrigatorio =
    QStringLiteral("Um motivo deve ser especificado!!");
const QString ReceiptCorrections::kExcluido = QStringLiteral("Exclusão efetuada com sucesso!!");
const QString ReceiptCorrections::kAlterado = QStringLiteral("Operação efetuada com sucesso!!");
const QString ReceiptCorrections::kErroGravar = QStringLiteral("Erro ao gravar");
const QString ReceiptCorrections::kRevertido = QStringLiteral("Revertido com sucesso!!");
const QString ReceiptCorrections::kErroReverter = QStringLiteral("Erro ao reverter arquivo! ");
const QString ReceiptCorrections::kValorInvalido =
    QStringLiteral("O valor informado não é um número!!");
const QString ReceiptCorrections::kAutenticaInvalida =
    QStringLiteral("O número de autenticação deve ser um número maior que zero!!");
const QString ReceiptCorrections::kAutenticaAcimaDoLimite =
    QStringLiteral("O número de autenticação vai até %1: os arquivos do movimento não levam um "
                   "número maior!!")
        .arg(clsRecebimentos::kMaxAutentica);
const QString ReceiptCorrections::kCodigoInvalido =
    QStringLiteral("O código de barras deve ter 44 dígitos!!");
const QString ReceiptCorrections::kTipoInvalido = QStringLiteral("Tipo de guia não cadastrado!!");
const QString ReceiptCorrections::kPadraoDiferente =
    QStringLiteral("O tipo %1 é de outro padrão: o recebimento só pode passar para um tipo do "
                   "mesmo padrão (%2).");
const QString ReceiptCorrections::kNadaAlterado = QStringLiteral("Nenhum campo foi alterado!!");
const QString ReceiptCorrections::kAutenticaEmUso =
    QStringLiteral("A autenticação %1 já pertence a outro recebimento deste movimento!!");
const QString ReceiptCorrections::kContaRecebida = QStringLiteral("Conta já Recebida!!!");
const QString ReceiptCorrections::kEncerrado =
    QStringLiteral("O movimento deste dia está encerrado!! Reabra o movimento (F5) para corrigir.");
const QString ReceiptCorrections::kSemMovimento = QStringLiteral("Não há movimento nesta data!!");
const QString ReceiptCorrections::kNaoEncontrado =
    QStringLiteral("Recebimento não encontrado no movimento deste dia!!");
const QString ReceiptCorrections::kSemEstorno =
    QStringLiteral("Não há estorno deste recebimento para reverter!!");
const QString ReceiptCorrections::kRegistroBloqueado =
    QStringLiteral("Não é possível gravar o registro de estornos em %1!! Nada foi alterado.");
const QString ReceiptCorrections::kRegistroFalhou =
    QStringLiteral("A correção foi gravada no banco, mas não no registro de estornos: %1");
const QString ReceiptCorrections::kFitaFalhou =
    QStringLiteral("A correção foi gravada, mas a linha da fita não foi impressa.");
const QString ReceiptCorrections::kLinhaImpressao =
    QStringLiteral("Erro na geração da linha de impressão!!!");

namespace {

// The amount right-aligned in 12; a long number takes the room of the leading blanks.
QString amountField(const Money& v, int room) {
    QString s = v.format().rightJustified(12, QLatin1Char(' '));
    while (s.size() > room && s.startsWith(QLatin1Char(' ')))
        s.remove(0, 1);
    return s;
}

bool semCodigoProprio(const QString& codbarra) {
    // The 44 zeros and the codes starting "000" may repeat.
    return codbarra.startsWith(QLatin1String("000"));
}
} // namespace

ReceiptCorrections::ReceiptCorrections(AppContext& ctx, CounterPrinter* printer)
    : m_ctx(ctx), m_printer(printer), m_log(ctx) {}

QString ReceiptCorrections::numero(int n) {
    return QStringLiteral("%1").arg(n, 3, 10, QLatin1Char('0'));
}

QString ReceiptCorrections::perguntaEstorno(qint32 autentica, const QString& arquivos) {
    const QString q = SystemTexts::text(SystemText::PerguntaExcluirLancamento) +
                      QStringLiteral(" - ") + numero(autentica);
    return arquivos.isEmpty() ? q : q + QLatin1Char('\n') + avisoArquivoBanco(autentica, arquivos);
}

QString ReceiptCorrections::avisoArquivoBanco(qint32 autentica, const QString& arquivos) {
    return QStringLiteral("O item %1 já foi enviado ao banco no arquivo %2: a correção não muda "
                          "esse arquivo; avise o banco.")
        .arg(numero(autentica), arquivos);
}

QString ReceiptCorrections::arquivosBanco(qint32 idrecebe) {
    const auto files = clsArquivoBanco::doRecebimento(m_ctx.db, idrecebe);
    QStringList out;
    for (const auto& f : files.value_or(QList<clsArquivoBanco::Arquivo>{}))
        out << f.descricao();
    return out.join(QStringLiteral(", "));
}

QString ReceiptCorrections::perguntaReversao(qint32 autentica) {
    return QStringLiteral("Confirma a reversão do estorno deste item? - ") + numero(autentica);
}

std::optional<clsMovimento> ReceiptCorrections::movimento() {
    return DayMovement::ofWorkingDate(m_ctx);
}

std::optional<QList<clsRecebimentos::Corrigivel>>
ReceiptCorrections::listar(std::optional<qint32> autentica) {
    const auto mov = movimento();
    if (!mov)
        return QList<clsRecebimentos::Corrigivel>{};
    auto rows = clsRecebimentos::listarParaCorrecao(m_ctx.db, mov->ID, autentica);
    if (!rows)
        m_ctx.errors.report(QStringLiteral("Função Lista_Movimento_dia"),
                            {0, m_ctx.db.lastError(), QStringLiteral("frmCorrigeGuia")});
    return rows;
}

std::optional<QList<clsEstornos>> ReceiptCorrections::estornosRevertiveis() {
    const auto mov = movimento();
    if (!mov)
        return QList<clsEstornos>{};
    return clsEstornos::estornosAbertos(m_ctx.db, mov->ID);
}

QString ReceiptCorrections::descricaoTipo(qint16 idcod) {
    clsCodBarra k(m_ctx.db);
    if (k.SQLSelect(idcod) && !k.DESCRICAO.trimmed().isEmpty())
        return k.DESCRICAO.trimmed();
    return QString::number(idcod);
}

void ReceiptCorrections::refuse(const QString& text) {
    m_ctx.dialogs.critical(SystemTexts::aviso(), text);
}

bool ReceiptCorrections::motivoDado(const QString& motivo) {
    if (motivo.trimmed().isEmpty()) {
        m_ctx.dialogs.warn(SystemTexts::aviso(), kMotivoObrigatorio);
        return false;
    }
    // The reason is one line of the year's log, kept as typed.
    if (const QString why = FileText::problem(motivo.trimmed(), FileText::Field::Motivo);
        !why.isEmpty()) {
        m_ctx.dialogs.warn(SystemTexts::aviso(), why);
        return false;
    }
    return true;
}

QString ReceiptCorrections::recusaRecebimento(qint32 idrecebe, clsRecebimentos& r,
                                              clsMovimento& mov) {
    const auto day = movimento();
    if (!day)
        return kSemMovimento;
    mov = *day;
    if (!mov.aberto())
        return kEncerrado;
    if (!r.SQLSelect(idrecebe) || r.IDMOVIMENTO != mov.ID)
        return kNaoEncontrado;
    return {};
}

QString ReceiptCorrections::recusaNumeroECodigo(qint32 idrecebe, std::optional<qint32> autentica,
                                                const std::optional<QString>& codbarra,
                                                qint32 idMovimento) {
    if (autentica) {
        const auto used =
            clsRecebimentos::autenticaEmUso(m_ctx.db, idMovimento, *autentica, idrecebe);
        if (!used || *used)
            return kAutenticaEmUso.arg(numero(*autentica));
    }
    if (codbarra && !semCodigoProprio(*codbarra)) {
        const auto used = clsRecebimentos::codigoEmUso(m_ctx.db, *codbarra, idrecebe);
        if (!used || *used)
            return kContaRecebida;
    }
    return {};
}

QString ReceiptCorrections::recusaRegistro() {
    QString where;
    return m_log.podeGravar(&where) ? QString() : kRegistroBloqueado.arg(where);
}

CorrectionLog::Entry ReceiptCorrections::entrada(CorrectionLog::Kind kind, const clsMovimento& mov,
                                                 const clsRecebimentos& r, const QString& motivo) {
    CorrectionLog::Entry e;
    e.kind = kind;
    e.movimento = mov.MOV;
    e.data = mov.MDATA;
    e.usuario = autorizou();
    // Named apart only when an administrator allowed what the operator at the counter did.
    e.operador = m_ctx.autorizadoPor.isEmpty() ? QString() : m_ctx.userName;
    e.autentica = r.AUTENTICA;
    e.tipo = descricaoTipo(r.TIPO);
    e.valor = r.VALOR;
    e.arquivoBanco = arquivosBanco(r.IDRECEBE);
    e.motivo = motivo.trimmed();
    return e;
}

void ReceiptCorrections::registrar(const CorrectionLog::Entry& e, Resultado& res) {
    QString error;
    res.arquivo = m_log.currentPath();
    res.registrado = m_log.append(e, &error);
    if (!res.registrado)
        m_ctx.dialogs.critical(SystemTexts::aviso(), kRegistroFalhou.arg(error));
}

void ReceiptCorrections::imprimir(const QStringList& linhas, bool composta, Resultado& res) {
    if (!composta) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), kLinhaImpressao);
        return;
    }
    res.linhasFita = linhas;
    if (!m_printer)
        return;
    for (const QString& l : linhas) {
        const auto f = m_printer->linhaFita(l);
        if (f == CounterPrinter::Fita::Falhou || res.fita != CounterPrinter::Fita::Falhou)
            res.fita = f;
    }
    if (res.fita == CounterPrinter::Fita::Falhou)
        m_ctx.dialogs.warn(SystemTexts::aviso(), kFitaFalhou);
}

clsEstornos ReceiptCorrections::registroDe(const clsRecebimentos& r, clsEstornos::Operacao op,
                                           const QString& motivo) {
    clsEstornos e(m_ctx.db);
    e.copiarRecebimento(r);
    e.OPERACAO = op;
    e.MOMENTO = m_ctx.clock.now();
    e.USUARIO = autorizou();
    e.MOTIVO = motivo.trimmed();
    return e;
}

QString ReceiptCorrections::autorizou() const {
    return m_ctx.autorizadoPor.isEmpty() ? m_ctx.userName : m_ctx.autorizadoPor;
}

bool ReceiptCorrections::registrarAto(const QString& ato, qint32 idEstorno) {
    return clsAtos::gravar(m_ctx.db, {m_ctx.clock.now(), ato, QStringLiteral("Estornos"), idEstorno,
                                      m_ctx.userName, m_ctx.autorizadoPor});
}

QString ReceiptCorrections::operadorDoAto(const QString& ato, qint32 idEstorno) {
    const auto atos = clsAtos::doRegistro(m_ctx.db, QStringLiteral("Estornos"), idEstorno);
    for (const clsAtos::Ato& a : atos.value_or(QList<clsAtos::Ato>{}))
        if (a.ato == ato)
            return a.autorizadoPor.isEmpty() ? QString() : a.operador;
    return {};
}

QString ReceiptCorrections::linhaPessoas() const {
    return clsAutenticadora::pad(
        QStringLiteral("OPER: %1 AUT: %2").arg(m_ctx.userName.left(14), autorizou().left(14)),
        clsAutenticadora::kWidth);
}

bool ReceiptCorrections::concluido(const QString& recusa, bool gravou, const QString& erro) {
    if (!recusa.isEmpty())
        recusa == kNadaAlterado ? m_ctx.dialogs.warn(SystemTexts::aviso(), recusa) : refuse(recusa);
    else if (!gravou)
        m_ctx.dialogs.critical(SystemTexts::aviso(), erro);
    return recusa.isEmpty() && gravou;
}

void ReceiptCorrections::concluirItem(CorrectionLog::Kind kind, const clsMovimento& mov,
                                      const clsRecebimentos& r, const QString& motivo,
                                      const QString& aviso, bool (clsAutenticadora::*linha)(),
                                      Resultado& res) {
    res.feito = true;
    NetworkOutbox::enviar(m_ctx);
    registrar(entrada(kind, mov, r, motivo), res);
    m_ctx.dialogs.info(SystemTexts::aviso(), aviso);
    clsAutenticadora a;
    a.SEQ_REG = numero(r.AUTENTICA);
    a.VALOR_DOC = amountField(r.VALOR, clsAutenticadora::kWidth - 25 - a.SEQ_REG.size());
    const bool composta = (a.*linha)();
    QStringList linhas{a.Correcao};
    if (!m_ctx.autorizadoPor.isEmpty())
        linhas << linhaPessoas();
    imprimir(linhas, composta, res);
}

std::optional<int> ReceiptCorrections::completarRegistro() {
    const auto rows = clsEstornos::listarTodos(m_ctx.db);
    if (!rows)
        return std::nullopt;
    QHash<qint32, std::optional<clsMovimento>> movimentos;
    std::map<int, QList<CorrectionLog::Entry>> esperadas; // by year, in the order of the rows
    for (const clsEstornos& row : *rows) {
        auto it = movimentos.find(row.IDMOVIMENTO);
        if (it == movimentos.end()) {
            clsMovimento mov(m_ctx.db);
            it = movimentos.insert(row.IDMOVIMENTO, mov.SQLSelect(row.IDMOVIMENTO)
                                                        ? std::optional(mov)
                                                        : std::nullopt);
        }
        clsMovimento mov(m_ctx.db);
        if (*it)
            mov = **it;
        clsRecebimentos antes(m_ctx.db);
        row.restaurarEm(antes);
        const bool alteracao = row.OPERACAO == clsEstornos::Operacao::Alteracao;
        clsRecebimentos depois = antes;
        if (alteracao) {
            depois.AUTENTICA = row.NOVO_AUTENTICA.value_or(antes.AUTENTICA);
            depois.TIPO = row.NOVO_TIPO.value_or(antes.TIPO);
            depois.VALOR = row.NOVO_VALOR.value_or(antes.VALOR);
        }
        CorrectionLog::Entry e =
            entrada(alteracao ? CorrectionLog::Kind::Alteracao : CorrectionLog::Kind::Estorno, mov,
                    depois, row.MOTIVO);
        e.usuario = row.USUARIO;
        e.operador = operadorDoAto(alteracao ? kAtoAlteracao : kAtoEstorno, row.ID);
        if (alteracao && depois.VALOR != antes.VALOR)
            e.valorAnterior = antes.VALOR;
        if (alteracao && depois.TIPO != antes.TIPO)
            e.tipoAnterior = descricaoTipo(antes.TIPO);
        esperadas[row.MOMENTO.date().year()].append(e);
        if (!alteracao && row.REVERTIDO_EM.isValid()) {
            CorrectionLog::Entry r = entrada(CorrectionLog::Kind::Reversao, mov, antes, row.MOTIVO);
            r.usuario = row.REVERTIDO_POR;
            r.operador = operadorDoAto(kAtoReversao, row.ID);
            esperadas[row.REVERTIDO_EM.date().year()].append(r);
        }
    }
    int added = 0;
    for (const auto& [year, entries] : esperadas) {
        QHash<QString, int> escritas;
        const auto files = m_log.read(year);
        for (const auto& f : files)
            for (const auto& p : CorrectionLog::parse(f.lines))
                ++escritas[CorrectionLog::chave(p.kind, p.fields)];
        QList<CorrectionLog::Entry> faltam;
        for (const CorrectionLog::Entry& e : entries) {
            int& n = escritas[CorrectionLog::chave(e.kind, CorrectionLog::lines(e))];
            if (n > 0)
                --n;
            else
                faltam << e;
        }
        QString error;
        if (!m_log.appendTo(year, faltam, &error)) {
            m_ctx.errors.append(QStringLiteral("Registro de estornos"),
                                {0, error, QStringLiteral("ReceiptCorrections")});
            return std::nullopt;
        }
        added += int(faltam.size());
    }
    return added;
}

void ReceiptCorrections::avisarArquivo(const clsRecebimentos& r, Resultado& res) {
    res.arquivoBanco = arquivosBanco(r.IDRECEBE);
    if (!res.arquivoBanco.isEmpty())
        m_ctx.dialogs.warn(SystemTexts::aviso(), avisoArquivoBanco(r.AUTENTICA, res.arquivoBanco));
}

bool ReceiptCorrections::podeEstornar(qint32 idrecebe, const QString& motivo) {
    if (!motivoDado(motivo))
        return false;
    clsRecebimentos r(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    QString recusa = recusaRecebimento(idrecebe, r, mov);
    if (recusa.isEmpty())
        recusa = recusaRegistro();
    if (!recusa.isEmpty())
        refuse(recusa);
    return recusa.isEmpty();
}

ReceiptCorrections::Resultado ReceiptCorrections::estornar(qint32 idrecebe, const QString& motivo) {
    Resultado res;
    if (!motivoDado(motivo))
        return res;
    completarRegistro();
    clsRecebimentos r(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    QString recusa;
    bool gravou = false;
    {
        Transaction tx(m_ctx.db);
        if (tx.ok())
            recusa = recusaRecebimento(idrecebe, r, mov);
        if (tx.ok() && recusa.isEmpty())
            recusa = recusaRegistro();
        if (tx.ok() && recusa.isEmpty()) {
            clsEstornos e = registroDe(r, clsEstornos::Operacao::Estorno, motivo);
            gravou = e.SQLInsert() && registrarAto(kAtoEstorno, e.ID) && r.SQLDelete() &&
                     NetworkOutbox::retirar(m_ctx, r, e.MOMENTO) && tx.commit();
        }
    }
    if (!concluido(recusa, gravou, SystemTexts::text(SystemText::ErroExcluir)))
        return res;
    res.antes = r;
    concluirItem(CorrectionLog::Kind::Estorno, mov, r, motivo, kExcluido,
                 &clsAutenticadora::EstornoItem, res);
    avisarArquivo(r, res);
    return res;
}

std::optional<ReceiptCorrections::Valores>
ReceiptCorrections::lerPedido(const Pedido& p, const clsRecebimentos& atual) {
    Valores v{atual.TIPO, atual.AUTENTICA, atual.CODBARRA, atual.VALOR};
    if (p.tipo) {
        bool ok = false;
        const int tipo = p.tipo->trimmed().toInt(&ok);
        clsCodBarra k(m_ctx.db);
        if (!ok || tipo < 1 || tipo > 99 || !k.SQLSelect(tipo)) {
            refuse(kTipoInvalido);
            return std::nullopt;
        }
        // The code's digits mean what its standard says: a Febraban guide read as a bank slip
        // would carry its digits as a face value.
        if (clsCodBarra antes(m_ctx.db);
            tipo != atual.TIPO && antes.SQLSelect(atual.TIPO) &&
            antes.PADRAO.trimmed().compare(k.PADRAO.trimmed(), Qt::CaseInsensitive) != 0) {
            refuse(kPadraoDiferente.arg(KindRegistry::codeText(tipo), antes.PADRAO.trimmed()));
            return std::nullopt;
        }
        v.tipo = static_cast<qint16>(tipo);
    }
    if (p.autentica) {
        bool ok = false;
        const qint64 n = p.autentica->trimmed().toLongLong(&ok);
        if (!ok || n < 1) {
            refuse(kAutenticaInvalida);
            return std::nullopt;
        }
        if (n > clsRecebimentos::kMaxAutentica) {
            refuse(kAutenticaAcimaDoLimite);
            return std::nullopt;
        }
        v.autentica = qint32(n);
    }
    if (p.codbarra) {
        static const QRegularExpression digits(QStringLiteral("^\\d{44}$"));
        const QString code = p.codbarra->trimmed();
        if (!digits.match(code).hasMatch()) {
            refuse(kCodigoInvalido);
            return std::nullopt;
        }
        v.codbarra = code;
    }
    if (p.valor) {
        const auto valor = Money::parseTyped(p.valor->trimmed());
        // An amount is whole centavos and more than nothing.
        if (!valor || valor->units() <= 0) {
            refuse(kValorInvalido);
            return std::nullopt;
        }
        v.valor = *valor;
    }
    return v;
}

ReceiptCorrections::Resultado ReceiptCorrections::alterar(const Pedido& p) {
    bool preenchidos = p.idrecebe > 0;
    for (const auto* field : {&p.tipo, &p.autentica, &p.codbarra, &p.valor})
        preenchidos = preenchidos && !(*field && (*field)->trimmed().isEmpty());
    if (!preenchidos) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::CamposObrigatorios));
        return {};
    }
    if (!motivoDado(p.motivo))
        return {};
    clsRecebimentos r(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    if (const QString recusa = recusaRecebimento(p.idrecebe, r, mov); !recusa.isEmpty()) {
        refuse(recusa);
        return {};
    }
    const auto novo = lerPedido(p, r);
    if (!novo)
        return {};
    return alterar(p.idrecebe, *novo, p.motivo);
}

ReceiptCorrections::Resultado ReceiptCorrections::alterar(qint32 idrecebe, const Valores& novo,
                                                          const QString& motivo) {
    Resultado res;
    if (!motivoDado(motivo))
        return res;
    completarRegistro();
    clsRecebimentos antes(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    QString recusa;
    bool gravou = false;
    clsRecebimentos depois(m_ctx.db);
    {
        Transaction tx(m_ctx.db);
        if (tx.ok())
            recusa = recusaRecebimento(idrecebe, antes, mov);
        if (tx.ok() && recusa.isEmpty() && novo.tipo == antes.TIPO &&
            novo.autentica == antes.AUTENTICA && novo.codbarra == antes.CODBARRA &&
            novo.valor == antes.VALOR)
            recusa = kNadaAlterado;
        if (tx.ok() && recusa.isEmpty() && novo.autentica != antes.AUTENTICA &&
            (novo.autentica < 1 || novo.autentica > clsRecebimentos::kMaxAutentica))
            recusa = kAutenticaAcimaDoLimite;
        if (tx.ok() && recusa.isEmpty())
            recusa = recusaNumeroECodigo(
                antes.IDRECEBE,
                novo.autentica != antes.AUTENTICA ? std::optional(novo.autentica) : std::nullopt,
                novo.codbarra != antes.CODBARRA ? std::optional(novo.codbarra) : std::nullopt,
                mov.ID);
        if (tx.ok() && recusa.isEmpty())
            recusa = recusaRegistro();
        if (tx.ok() && recusa.isEmpty()) {
            clsEstornos e = registroDe(antes, clsEstornos::Operacao::Alteracao, motivo);
            e.NOVO_TIPO = novo.tipo;
            e.NOVO_AUTENTICA = novo.autentica;
            e.NOVO_CODBARRA = novo.codbarra;
            e.NOVO_VALOR = novo.valor;
            depois = antes;
            depois.TIPO = novo.tipo;
            depois.AUTENTICA = novo.autentica;
            depois.CODBARRA = novo.codbarra;
            depois.VALOR = novo.valor;
            gravou = e.SQLInsert() && registrarAto(kAtoAlteracao, e.ID) && depois.SQLUpdate();
            if (gravou && depois.CODBARRA != antes.CODBARRA)
                gravou = NetworkOutbox::retirar(m_ctx, antes, e.MOMENTO) &&
                         NetworkOutbox::publicar(m_ctx, depois);
            // Items without barcode never go to a bank file; a real code does.
            const bool semCodigo = depois.CODBARRA == clsRecebimentos::kSemCodigo;
            if (gravou && semCodigo != (antes.CODBARRA == clsRecebimentos::kSemCodigo)) {
                depois.EXPORT = semCodigo ? 1 : 0;
                gravou = depois.SQLUpdateExport(depois.IDRECEBE, depois.EXPORT);
            }
            gravou = gravou && tx.commit();
        }
    }
    if (!concluido(recusa, gravou, kErroGravar))
        return res;
    res.feito = true;
    res.antes = antes;
    res.depois = depois;
    if (depois.CODBARRA != antes.CODBARRA)
        NetworkOutbox::enviar(m_ctx);
    CorrectionLog::Entry e = entrada(CorrectionLog::Kind::Alteracao, mov, depois, motivo);
    if (depois.VALOR != antes.VALOR)
        e.valorAnterior = antes.VALOR;
    if (depois.TIPO != antes.TIPO)
        e.tipoAnterior = descricaoTipo(antes.TIPO);
    registrar(e, res);
    m_ctx.dialogs.info(SystemTexts::aviso(), kAlterado);
    avisarArquivo(antes, res);
    QStringList linhas;
    clsAutenticadora a;
    a.SEQ_REG = numero(depois.AUTENTICA);
    bool composed = true;
    if (depois.VALOR != antes.VALOR) {
        a.VALOR_DOC = depois.VALOR.format();
        composed = a.AlteraValor();
        linhas << a.Correcao;
    }
    if (depois.TIPO != antes.TIPO) {
        a.NOME_GUIA = e.tipo.left(clsAutenticadora::kWidth - 27 - a.SEQ_REG.size());
        composed = a.AlteraTipo() && composed;
        linhas << a.Correcao;
    }
    if (!linhas.isEmpty() && !m_ctx.autorizadoPor.isEmpty())
        linhas << linhaPessoas();
    imprimir(linhas, composed, res);
    return res;
}

QString ReceiptCorrections::recusaEstorno(qint32 idrecebe, clsEstornos& e, clsMovimento& mov) {
    const auto day = movimento();
    if (!day)
        return kSemMovimento;
    mov = *day;
    const auto found = clsEstornos::ultimoEstorno(m_ctx.db, idrecebe);
    if (!found || found->IDMOVIMENTO != mov.ID)
        return kSemEstorno;
    if (!mov.aberto())
        return kEncerrado;
    e = *found;
    // The receipt comes back with its own number and code, so neither may have been taken.
    QString recusa = recusaNumeroECodigo(e.IDRECEBE, e.AUTENTICA, e.CODBARRA, mov.ID);
    return recusa.isEmpty() ? recusaRegistro() : recusa;
}

bool ReceiptCorrections::podeReverter(qint32 idrecebe) {
    clsEstornos e(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    const QString recusa = recusaEstorno(idrecebe, e, mov);
    if (!recusa.isEmpty())
        refuse(recusa);
    return recusa.isEmpty();
}

ReceiptCorrections::Resultado ReceiptCorrections::reverter(qint32 idrecebe) {
    Resultado res;
    completarRegistro();
    clsEstornos e(m_ctx.db);
    clsMovimento mov(m_ctx.db);
    clsRecebimentos r(m_ctx.db);
    QString recusa;
    bool gravou = false;
    {
        Transaction tx(m_ctx.db);
        if (tx.ok())
            recusa = recusaEstorno(idrecebe, e, mov);
        if (tx.ok() && recusa.isEmpty()) {
            e.restaurarEm(r);
            gravou = r.SQLRestore() && e.SQLMarcarRevertido(m_ctx.clock.now(), autorizou()) &&
                     registrarAto(kAtoReversao, e.ID) && NetworkOutbox::publicar(m_ctx, r) &&
                     tx.commit();
        }
    }
    if (!concluido(recusa, gravou, kErroReverter))
        return res;
    res.depois = r;
    concluirItem(CorrectionLog::Kind::Reversao, mov, r, e.MOTIVO, kRevertido,
                 &clsAutenticadora::ReverteItem, res);
    return res;
}
