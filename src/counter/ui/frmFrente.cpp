#include "frmFrente.h"

#include "AdminGuard.h"
#include "AppContext.h"
#include "AuthCounterPrinter.h"
#include "CalculatorDialog.h"
#include "Clock.h"
#include "CommandRegistry.h"
#include "CounterSession.h"
#include "DateUtil.h"
#include "DialogPort.h"
#include "LancadosModel.h"
#include "NetworkStatus.h"
#include "OverdueHandler.h"
#include "PendingStampsDialog.h"
#include "PrinterWorker.h"
#include "QtDialogPort.h"
#include "ScanBuffer.h"
#include "SystemTexts.h"
#include "Tone.h"
#include "TypedLine.h"
#include "frmAvulso.h"
#include "frmFeriados.h"
#include "frmJuros.h"
#include "frmLdg.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
constexpr int kRedeMs = 5000; // how often the network label looks at the central and the outbox

QLabel* label(const QString& name, const QString& text, QWidget* parent, int pointSize = 0,
              bool bold = false) {
    auto* l = new QLabel(text, parent);
    l->setObjectName(name);
    if (pointSize || bold) {
        QFont f = l->font();
        if (pointSize)
            f.setPointSize(pointSize);
        f.setBold(bold);
        l->setFont(f);
    }
    return l;
}

bool allDigits(const QString& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}

// What the cashier sees in lblStatus when a read ends without a notice of its own.
QString statusText(ReadingDecision::Outcome o) {
    switch (o) {
    case ReadingDecision::Outcome::Encerrado:
        return QStringLiteral("Movimento encerrado: reabra com F5 para receber");
    case ReadingDecision::Outcome::Desconhecida:
        return QStringLiteral("Tipo de guia não cadastrado");
    case ReadingDecision::Outcome::Digito:
        return QStringLiteral("Dígito verificador não confere");
    case ReadingDecision::Outcome::NaoReconhecida:
        return QStringLiteral("Código não reconhecido: confira o tipo de guia");
    default:
        break;
    }
    return {};
}
} // namespace

frmFrente::frmFrente(CounterSession& session, bool consulta, QWidget* parent)
    : QMainWindow(parent), m_session(session), m_ctx(session.ctx()), m_consulta(consulta) {
    setObjectName(QStringLiteral("frmFrente"));
    setWindowTitle(consulta ? QStringLiteral("Tolvane - Caixa (consulta)")
                            : QStringLiteral("Tolvane - Caixa"));
    m_keyClock.start();
    buildUi();
    m_statusTimer = new QTimer(this);
    m_statusTimer->setSingleShot(true);
    connect(m_statusTimer, &QTimer::timeout, this, &frmFrente::refreshStatus);
    m_lineWait = new QTimer(this);
    m_lineWait->setSingleShot(true);
    connect(m_lineWait, &QTimer::timeout, this, [this] {
        if (m_entry->text().size() == 44 && !m_reading)
            Leitura_codigo_barras();
    });
    auto* timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("tmrDiaHora"));
    connect(timer, &QTimer::timeout, this, &frmFrente::tick);
    timer->start(1000);
    tick();
    auto* rede = new QTimer(this);
    rede->setObjectName(QStringLiteral("tmrRede"));
    connect(rede, &QTimer::timeout, this, &frmFrente::refreshNetwork);
    rede->start(kRedeMs);
    fillKinds();
    m_session.kindsFilled = [this](const GuideKinds& kinds, bool selectFirst) {
        showKinds(kinds, selectFirst);
    };
    if (m_consulta) {
        // A past day is only looked at: what cannot act here is shown disabled (the shell
        // disables the commands that change the day).
        for (QWidget* w : {static_cast<QWidget*>(m_entry), static_cast<QWidget*>(m_kinds),
                           static_cast<QWidget*>(m_valor)})
            w->setEnabled(false);
        for (const char* name : {"cmdLdg", "cmdAvulso"})
            findChild<QPushButton*>(QLatin1String(name))->setEnabled(false);
    }
    refreshAll();
    refreshUnstamped();
    // The screen sees every key first, wherever the focus is inside it; the scan buffer, installed
    // after it, sees them before it and keeps a scan from any box of the counter.
    qApp->installEventFilter(this);
    m_scans = new ScanBuffer(this, [this](int key, const QString& text) { replayKey(key, text); });
    m_scans->ready = [this] { return !m_reading && !m_recording; };
    setProperty(kKeepsScans, true);
    m_entry->setFocus();
    // Documents a stop left without a stamp are listed at once, beside the counter: the list
    // takes no focus, so the first scan still reaches the code field.
    QTimer::singleShot(0, this, [this] {
        if (m_semAutenticacao > 0)
            showPendentes(false);
    });
}

frmFrente::~frmFrente() {
    qApp->removeEventFilter(this);
    m_session.kindsFilled = nullptr;
    if (m_authPrinter)
        m_authPrinter->autenticados = nullptr;
}

QAction* frmFrente::action(const char* name) const {
    return findChild<QAction*>(QLatin1String(name));
}

QWidget* frmFrente::buildTopBar(QWidget* parent) {
    auto* bar = new QWidget(parent);
    m_status = label(QStringLiteral("lblStatus"), QString(), bar, 16, true);
    m_rede = label(QStringLiteral("lblStatusRede"), QStringLiteral("REDE INATIVA"), bar, 0, true);
    Tone::set(m_rede, "alerta");
    // Its room is kept while hidden: the central going away never reflows or widens the bar.
    QSizePolicy redePolicy = m_rede->sizePolicy();
    redePolicy.setRetainSizeWhenHidden(true);
    m_rede->setSizePolicy(redePolicy);
    m_rede->hide();
    m_user = label(QStringLiteral("lbluser"), QString(), bar, 12);
    m_dataCaixa = label(QStringLiteral("lblDataCaixa"), QString(), bar, 16, true);
    m_dataCaixa->setContentsMargins(8, 2, 8, 2);
    m_dia = label(QStringLiteral("lblDia"), QString(), bar, 12);
    m_hora = label(QStringLiteral("lblHora"), QString(), bar, 16, true);
    // A long status line wraps inside the room left; it never widens the window.
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_status->setMinimumWidth(150);
    m_status->setWordWrap(true);
    auto* top = new QHBoxLayout(bar);
    top->setContentsMargins(0, 0, 0, 0);
    top->addWidget(m_status, 1);
    top->addWidget(m_rede);
    // The operator above the computer's date: the bar fits a 1024 wide screen.
    auto* who = new QVBoxLayout;
    who->setSpacing(0);
    who->addWidget(m_user, 0, Qt::AlignRight);
    who->addWidget(m_dia, 0, Qt::AlignRight);
    top->addLayout(who);
    top->addSpacing(16);
    top->addWidget(m_dataCaixa);
    top->addSpacing(12);
    top->addWidget(m_hora);
    return bar;
}

QWidget* frmFrente::buildLancados(QWidget* parent) {
    auto* box = new QWidget(parent);
    m_lancadoTitle = label(QStringLiteral("lblLancado"), QString(), box, 13, true);
    m_lancado = new QTreeView(box);
    m_lancado->setObjectName(QStringLiteral("lstLancado"));
    m_lancado->setRootIsDecorated(false);
    m_lancado->setUniformRowHeights(true);
    m_lancado->setAlternatingRowColors(true);
    m_lancadoModel = new LancadosModel(
        [this](qint32 antesDe, int limite) { return m_session.lancados(antesDe, limite); }, this);
    m_lancado->setModel(m_lancadoModel);
    m_lancadoModel->attach(m_lancado);
    QFont f = m_lancado->font();
    f.setPointSize(12);
    m_lancado->setFont(f);
    QHeaderView* h = m_lancado->header();
    h->setStretchLastSection(false);
    h->setSectionResizeMode(0, QHeaderView::Fixed);
    h->setSectionResizeMode(1, QHeaderView::Stretch);
    h->setSectionResizeMode(2, QHeaderView::Fixed);
    // Whole amounts: the value column is as wide as the largest amount a day can hold.
    const QFontMetrics fm(f);
    h->resizeSection(0, fm.horizontalAdvance(QStringLiteral("00000")) + 16);
    h->resizeSection(2, fm.horizontalAdvance(QStringLiteral("99.999.999,99")) + 20);
    box->setFixedWidth(380); // the rest of the width goes to the customer's list
    m_dayTotals = label(QStringLiteral("lblTotalDia"), QString(), box, 13, true);
    m_dayTotals->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_dayTotals->setWordWrap(true); // a big day's total takes a second line, never cut
    auto* v = new QVBoxLayout(box);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_lancadoTitle);
    v->addWidget(m_lancado, 1);
    v->addWidget(m_dayTotals);
    return box;
}

QWidget* frmFrente::buildSoma(QWidget* central) {
    m_soma = new QTreeWidget(central);
    m_soma->setObjectName(QStringLiteral("lstSoma"));
    m_soma->setRootIsDecorated(false);
    m_soma->setAlternatingRowColors(true);
    m_soma->setFocusPolicy(Qt::NoFocus);
    QFont rows = m_soma->font();
    rows.setPointSize(11);
    m_soma->setFont(rows);
    m_soma->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Tipo"),
                             QStringLiteral("Valor"), QStringLiteral("Total"),
                             QStringLiteral("Código de barras"), QStringLiteral("Vencimento"),
                             QStringLiteral("Parcela"), QStringLiteral("Obs")});
    // Every column in sight: the kind's name gives way (elided), the code never does.
    m_soma->header()->setStretchLastSection(false);
    m_soma->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_soma->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_soma->headerItem()->setTextAlignment(2, Qt::AlignRight);
    m_soma->headerItem()->setTextAlignment(3, Qt::AlignRight);
    // An empty sum says what the counter expects instead of showing a blank list.
    auto* empty = label(QStringLiteral("lblSomaVazia"),
                        QStringLiteral("Passe o leitor no código de barras\nou digite a linha "
                                       "digitável e tecle Enter\n\n"
                                       "+  item sem código      -  valor pago      "
                                       "Enter  grava o pagamento"),
                        central, 15);
    empty->setAlignment(Qt::AlignCenter);
    empty->setWordWrap(true); // a narrow screen wraps it rather than widening the window
    Tone::set(empty, "dica");
    m_somaStack = new QStackedWidget(central);
    m_somaStack->addWidget(empty);
    m_somaStack->addWidget(m_soma);
    return m_somaStack;
}

void frmFrente::buildUi() {
    auto* central = new QWidget(this);
    setCentralWidget(central);

    // The printer's banner keeps the room of two lines, shown or not, so the code field never
    // moves under the cashier's eyes.
    m_impressora = label(QStringLiteral("lblImpressora"), QString(), central, 12, true);
    m_impressora->setContentsMargins(10, 2, 10, 2);
    m_impressora->setWordWrap(true);
    m_impressora->setFixedHeight(2 * m_impressora->fontMetrics().lineSpacing() + 8);
    QSizePolicy bannerPolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    bannerPolicy.setRetainSizeWhenHidden(true);
    m_impressora->setSizePolicy(bannerPolicy);
    m_impressora->hide();

    m_entry = new QLineEdit(central);
    m_entry->setObjectName(QStringLiteral("txtValorCodBarra"));
    m_entry->setMaxLength(60);
    QFont big = m_entry->font();
    big.setPointSize(18);
    m_entry->setFont(big);
    m_kinds = new QComboBox(central);
    m_kinds->setObjectName(QStringLiteral("cmbTipoGuia"));
    m_kinds->setMinimumWidth(220);
    QFont mid = m_kinds->font();
    mid.setPointSize(12);
    m_kinds->setFont(mid);
    m_valor = new QLineEdit(central);
    m_valor->setObjectName(QStringLiteral("mskvalor"));
    m_valor->setAlignment(Qt::AlignRight);
    m_valor->setFont(mid);
    m_valor->setMaximumWidth(160);
    auto* ldg = new QPushButton(QStringLiteral("Linha &Digitável"), central);
    ldg->setObjectName(QStringLiteral("cmdLdg"));
    ldg->setFocusPolicy(Qt::NoFocus);
    connect(ldg, &QPushButton::clicked, this, &frmFrente::typedLine);
    auto* avulso = new QPushButton(QStringLiteral("A&vulso"), central);
    avulso->setObjectName(QStringLiteral("cmdAvulso"));
    avulso->setFocusPolicy(Qt::NoFocus);
    connect(avulso, &QPushButton::clicked, this, &frmFrente::avulso);
    auto* entryRow = new QHBoxLayout;
    entryRow->addWidget(label(QStringLiteral("lblCodigo"), QStringLiteral("Código:"), central, 13));
    entryRow->addWidget(m_entry, 1);
    entryRow->addWidget(ldg);
    entryRow->addWidget(avulso);
    auto* kindRow = new QHBoxLayout;
    kindRow->addWidget(
        label(QStringLiteral("lblTipo"), QStringLiteral("Tipo de guia:"), central, 12));
    kindRow->addWidget(m_kinds, 1);
    kindRow->addWidget(label(QStringLiteral("lblValor"), QStringLiteral("Valor:"), central, 12));
    kindRow->addWidget(m_valor);

    buildSoma(central);

    auto* totalCaption =
        label(QStringLiteral("lblTotalCaption"), QStringLiteral("Total do cliente"), central, 13);
    m_total = label(QStringLiteral("lbltotalConta"), QStringLiteral("Calcular"), central, 28, true);
    m_total->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_troco = label(QStringLiteral("lblTroco"), QStringLiteral("A Pagar"), central, 20, true);
    m_troco->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* totals = new QHBoxLayout;
    totals->addWidget(totalCaption);
    totals->addStretch();
    totals->addWidget(m_total);

    auto* left = new QVBoxLayout;
    left->addLayout(entryRow);
    left->addLayout(kindRow);
    left->addWidget(m_somaStack, 1);
    left->addLayout(totals);
    left->addWidget(m_troco);
    auto* body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addWidget(buildLancados(central));

    auto* layout = new QVBoxLayout(central);
    layout->addWidget(buildTopBar(central));
    layout->addWidget(m_impressora);
    layout->addLayout(body, 1);

    connect(m_entry, &QLineEdit::textChanged, this, &frmFrente::onEntryChanged);
}

void frmFrente::registerCommands(CommandRegistry& r) {
    const QString caixa = QStringLiteral("&Caixa"), soma = QStringLiteral("&Soma"),
                  tools = QStringLiteral("&Ferramentas");
    const auto on = [this](void (frmFrente::*slot)()) { return [this, slot] { (this->*slot)(); }; };
    r.add(QStringLiteral("mnuEncerrar"), caixa, QStringLiteral("Encerrar Mov. (F4)"),
          on(&frmFrente::encerrar), true);
    r.add(QStringLiteral("mnuReabrir"), caixa, QStringLiteral("Reabrir Cupom (F5)"),
          on(&frmFrente::reabrir), true);
    r.add(QStringLiteral("mnuRecebidas"), caixa, QStringLiteral("Contas Recebidas (F7)"),
          on(&frmFrente::recebidas));
    r.separator();
    r.add(QStringLiteral("mnuReautenticar"), caixa, QStringLiteral("Reautenticar Último Pagamento"),
          on(&frmFrente::reautenticarUltimo), true);
    r.add(QStringLiteral("mnuReautNumero"), caixa, QStringLiteral("Reautenticar por Número..."),
          on(&frmFrente::reautenticarNumero), true);
    r.add(QStringLiteral("mnuPendentes"), caixa, QStringLiteral("Documentos sem Autenticação..."),
          on(&frmFrente::pendentes), true);
    r.separator();
    r.add(QStringLiteral("mnulogoff"), caixa, QStringLiteral("Trocar Operador"),
          [this] { emit logoff(); });
    r.add(QStringLiteral("mnuSair"), caixa, QStringLiteral("Sair (ESC)"), [this] { close(); });
    r.add(QStringLiteral("mnuExcluiUltimo"), soma, QStringLiteral("Exclui último Item (F2)"),
          on(&frmFrente::removeLast), true);
    r.add(QStringLiteral("mnuLimpar"), soma, QStringLiteral("Limpa Soma (F3)"),
          on(&frmFrente::limparSoma), true);
    r.add(QStringLiteral("mnuLimpaIdent"), soma, QStringLiteral("Limpar Identificação (F8)"),
          on(&frmFrente::limparIdentificacao), true);
    r.add(QStringLiteral("mnuRemove"), soma, QStringLiteral("Excluir Item..."),
          on(&frmFrente::removeByNumber), true);
    r.separator();
    r.add(
        QStringLiteral("mnuGravar"), soma, QStringLiteral("Salvar Soma (F11)"),
        [this] { m_session.salvarSoma(); }, true);
    r.add(QStringLiteral("mnuCarregar"), soma, QStringLiteral("Carregar Soma (F12)"),
          on(&frmFrente::carregarSoma), true);
    r.separator();
    r.add(QStringLiteral("mnuLdg"), soma, QStringLiteral("Linha Digitável..."),
          on(&frmFrente::typedLine), true);
    r.add(QStringLiteral("mnuAvulso"), soma, QStringLiteral("Item Avulso..."),
          on(&frmFrente::avulso), true);
    r.add(QStringLiteral("mnuJuros"), tools, QStringLiteral("Juros por Dia/Mês (F6)"),
          on(&frmFrente::juros));
    r.add(QStringLiteral("mnuCalculadora"), tools, QStringLiteral("Calculadora (F9)"),
          on(&frmFrente::calculadora));
    r.add(QStringLiteral("mnuFeriados"), tools, QStringLiteral("Feriados..."),
          on(&frmFrente::feriados));
}

void frmFrente::afterScreen() {
    fillKinds(); // kinds and settings may have changed
    refreshAll();
    m_entry->setFocus();
}

void frmFrente::placeRibbon(QLayout* strip) {
    static_cast<QVBoxLayout*>(centralWidget()->layout())->addLayout(strip);
}

void frmFrente::setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer) {
    m_authPrinter = printer;
    if (printer)
        printer->autenticados = [this](const QList<int>&, const QList<int>&) {
            refreshUnstamped();
            if (m_pendentes)
                m_pendentes->refresh();
        };
    if (!worker)
        return;
    connect(worker, &PrinterWorker::aguardandoDocumento, this, [this](const QString& texto) {
        // The wait is the cashier's to end: the document stays among those without a stamp.
        printerLine(texto.isEmpty()
                        ? QString()
                        : QStringLiteral("Insira o documento: ") + texto.toHtmlEscaped() +
                              QStringLiteral(" &nbsp; <a href=\"cancelar\">Cancelar "
                                             "a espera</a>"),
                    true);
    });
    connect(m_impressora, &QLabel::linkActivated, worker, [worker] { worker->cancelarEspera(); });
    connect(worker, &PrinterWorker::aviso, this,
            [this](const QString& title, const QString& text, int icon) {
                m_ctx.dialogs.message(title, text, DialogIcon(icon), DialogButtons::Ok);
            });
}

void frmFrente::printerLine(const QString& text, bool waiting) {
    m_impressora->setText(text);
    Tone::set(m_impressora, waiting ? "espera" : "falta");
    m_impressora->setVisible(!text.isEmpty());
}

void frmFrente::refreshUnstamped() {
    // From the database, so a restart (even a killed program) still names every document the
    // printer never confirmed. Only a counter with a printer that stamps is reminded.
    m_semAutenticacao = 0;
    if (m_consulta || !ReceiptStamps::autenticadoraAtiva(m_ctx)) {
        printerLine(QString(), false);
        return;
    }
    const auto rows = m_session.pendentes();
    m_semAutenticacao = rows ? int(rows->size()) : 0;
    if (!rows || rows->isEmpty()) {
        printerLine(QString(), false);
        return;
    }
    constexpr int kNamed = 8; // beyond these the banner counts, so it keeps to one line
    QStringList n;
    for (int i = 0; i < rows->size() && i < kNamed; ++i)
        n << QStringLiteral("%1").arg(rows->at(i).autentica, 4, 10, QLatin1Char('0'));
    if (rows->size() > kNamed)
        n << QStringLiteral("e mais %1").arg(rows->size() - kNamed);
    printerLine(QStringLiteral("Documentos sem autenticação: %1. Quando a autenticadora voltar: "
                               "Caixa > Documentos sem Autenticação.")
                    .arg(n.join(QStringLiteral(", "))),
                false);
}

void frmFrente::pendentes() {
    showPendentes(true);
}

void frmFrente::showPendentes(bool activate) {
    if (m_consulta)
        return;
    if (!m_pendentes) {
        m_pendentes = new PendingStampsDialog(m_session, this);
        m_pendentes->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_pendentes, &QDialog::finished, this, [this] {
            refreshUnstamped();
            m_entry->setFocus();
        });
    }
    m_pendentes->refresh();
    m_pendentes->setAttribute(Qt::WA_ShowWithoutActivating, !activate);
    m_pendentes->show();
    if (activate) {
        m_pendentes->raise();
        m_pendentes->activateWindow();
    }
}

void frmFrente::tick() {
    const QDateTime now = m_ctx.clock.now();
    m_dia->setText(now.toString(QStringLiteral("dd/MM/yyyy")));
    m_hora->setText(QStringLiteral("Agora: ") + now.toString(QStringLiteral("hh:mm:ss AP")));
    // A working date that is not today must not be missed.
    const bool past = m_ctx.workingDate.isValid() && m_ctx.workingDate != now.date();
    m_dataCaixa->setText(QStringLiteral("Caixa de ") + DateUtil::br(m_ctx.workingDate) +
                         (past ? QStringLiteral(" (não é hoje)") : QString()));
    Tone::set(m_dataCaixa, past ? "passado" : "data");
}

bool frmFrente::fillKinds() {
    m_kinds->clear();
    for (const GuideKind& k : m_session.kinds())
        m_kinds->addItem(k.descricao, k.idcod);
    m_kinds->setCurrentIndex(-1);
    m_kindsAreEntry = true;
    return m_kinds->count() > 0;
}

void frmFrente::showKinds(const GuideKinds& kinds, bool selectFirst) {
    m_kinds->clear();
    for (const GuideKind& k : kinds)
        m_kinds->addItem(k.descricao, k.idcod);
    m_kinds->setCurrentIndex(selectFirst && !kinds.isEmpty() ? 0 : -1);
    m_kindsAreEntry = false;
}

void frmFrente::refreshAll() {
    refreshList();
    refreshLancados();
    refreshStatus();
}

void frmFrente::refreshList() {
    const CustomerList& list = m_session.list();
    m_soma->clear();
    for (int r = 0; r < list.size(); ++r) {
        QStringList cols;
        for (int c = 0; c < CustomerList::kColumns; ++c)
            cols << list.text(r, CustomerList::Column(c));
        auto* item = new QTreeWidgetItem(cols);
        item->setTextAlignment(2, Qt::AlignRight);
        item->setTextAlignment(3, Qt::AlignRight);
        m_soma->addTopLevelItem(item);
        m_soma->scrollToItem(item);
    }
    m_somaStack->setCurrentIndex(list.isEmpty() ? 0 : 1);
    if (!list.isEmpty())
        m_lastChange.clear();
    m_total->setText(list.isEmpty() ? QStringLiteral("Calcular") : list.total().formatCurrency());
    Tone::set(m_total, list.isEmpty() ? "apagado" : "");
    m_troco->setText(list.isEmpty() && !m_lastChange.isEmpty() ? m_lastChange
                                                               : m_session.paymentLabel());
}

void frmFrente::forgetChange() {
    if (m_lastChange.isEmpty())
        return;
    m_lastChange.clear();
    m_troco->setText(m_session.paymentLabel());
}

void frmFrente::refreshLancados() {
    m_lancadoTitle->setText(m_session.lancadosHeading());
    m_lancadoModel->reload();
    refreshDayTotals();
}

// The day's count and total are the core's, read again, never kept beside it.
void frmFrente::refreshDayTotals() {
    const auto r = m_session.resumoLancados();
    const qint64 count = r ? r->quantidade : 0;
    m_dayTotals->setText(
        QStringLiteral("%1 %2    Total do dia: %3")
            .arg(count)
            .arg(count == 1 ? QStringLiteral("recebimento") : QStringLiteral("recebimentos"))
            .arg((r ? r->total : Money()).formatCurrency()));
}

void frmFrente::refreshStatus() {
    m_statusTimer->stop();
    m_status->setText(m_consulta ? QStringLiteral("CONSULTA - ") + m_session.day().statusLabel()
                                 : m_session.day().statusLabel());
    Tone::set(m_status, m_session.day().aberto() ? "pronto" : "alerta");
    m_user->setText(QStringLiteral("Operador: ") + m_ctx.userName);
}

void frmFrente::statusLine(const QString& text) {
    // A scan that added nothing still gets a word and a sound, so the cashier knows it was seen.
    m_status->setText(text);
    Tone::set(m_status, "erro");
    QApplication::beep();
    m_statusTimer->start(8000);
}

bool frmFrente::eventFilter(QObject* watched, QEvent* event) {
    if (m_scans && m_scans->counterBoxOpen() && boxKeepsInput(watched, event))
        return true;
    if (event->type() != QEvent::KeyPress)
        return QMainWindow::eventFilter(watched, event);
    auto* w = qobject_cast<QWidget*>(watched);
    // Dialogs and popups keep their own keys; every key inside this window comes here first.
    if (!w || w->window() != this)
        return false;
    if (m_recording)
        return true; // nothing acts until the payment is recorded; a scan waits in the buffer
    auto* ke = static_cast<QKeyEvent*>(event);
    if (handleKey(ke))
        return true;
    // Typing while the focus is on a list goes to the entry, so a scan is never lost there.
    const bool onInput = w == m_entry || w == m_valor || w == m_kinds || m_kinds->isAncestorOf(w);
    if (!onInput && !ke->text().isEmpty() && ke->text().at(0).isPrint() && m_entry->isEnabled()) {
        m_entry->setFocus();
        QKeyEvent copy(ke->type(), ke->key(), ke->modifiers(), ke->text());
        QApplication::sendEvent(m_entry, &copy);
        return true;
    }
    return false;
}

bool frmFrente::boxKeepsInput(QObject* watched, QEvent* event) {
    // A box of the counter does not block this window: while it is open, the window's own
    // keys go to the box (the scan buffer already took the digits) and its clicks go nowhere.
    auto* w = qobject_cast<QWidget*>(watched);
    if (!w || w->window() != this)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        QWidget* box = QApplication::activeModalWidget();
        auto* ke = static_cast<QKeyEvent*>(event);
        QKeyEvent copy(ke->type(), ke->key(), ke->modifiers(), ke->text());
        QApplication::sendEvent(box->focusWidget() ? box->focusWidget() : box, &copy);
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ShortcutOverride:
        return true;
    default:
        return false;
    }
}

bool frmFrente::handleKey(QKeyEvent* event) {
    const auto trigger = [this](const char* name) {
        if (QAction* a = action(name))
            a->trigger(); // does nothing while the action is disabled
        return true;
    };
    QWidget* focus = QApplication::focusWidget();
    switch (event->key()) {
    case Qt::Key_Plus:
        if (m_consulta)
            return true;
        m_entry->clear();
        if (!m_kindsAreEntry)
            fillKinds();
        m_kinds->setFocus();
        if (m_ctx.settings.tecla_mais == 1)
            m_kinds->showPopup();
        return true;
    case Qt::Key_Minus:
        // The dashes of a typed line are part of the line, not the amount key.
        if (focus == m_entry && CounterSession::pareceInicioDeLinha(m_entry->text()))
            return false;
        tender();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (focus == m_kinds) {
            m_valor->setFocus();
            m_valor->selectAll();
        } else if (focus == m_valor) {
            addTypedItem();
        } else {
            enter();
        }
        return true;
    case Qt::Key_F2:
        return trigger("mnuExcluiUltimo");
    case Qt::Key_F3:
        return trigger("mnuLimpar");
    case Qt::Key_F4:
        return trigger("mnuEncerrar");
    case Qt::Key_F5:
        return trigger("mnuReabrir");
    case Qt::Key_F6:
        return trigger("mnuJuros");
    case Qt::Key_F7:
        return trigger("mnuRecebidas");
    case Qt::Key_F8:
        return trigger("mnuLimpaIdent");
    case Qt::Key_F9:
        return trigger("mnuCalculadora");
    case Qt::Key_F11:
        return trigger("mnuGravar");
    case Qt::Key_F12:
        return trigger("mnuCarregar");
    case Qt::Key_Escape:
        return trigger("mnuSair");
    default:
        break;
    }
    return false;
}

void frmFrente::onEntryChanged(const QString& text) {
    const qint64 now = m_keyClock.elapsed();
    m_lineWait->stop();
    if (text.isEmpty()) {
        m_handTyped = false;
        m_lastChangeAt = -1;
        return;
    }
    forgetChange(); // the next customer begins
    // One pause longer than a scanner ever makes, and the entry is being typed by hand: it is
    // read on Enter, as a code or as a typed line.
    if (m_lastChangeAt >= 0 && now - m_lastChangeAt > m_scannerKeyGapMs)
        m_handTyped = true;
    m_lastChangeAt = now;
    // Only 44 digits are a scan: a typed line keeps its dots and spaces until its Enter. When
    // the digits are the start of a typed line keyed in quickly, the read waits a moment: a
    // 45th digit makes it a line, read on its Enter.
    if (text.size() != 44 || m_handTyped || m_reading || !allDigits(text))
        return;
    if (TypedLine::pareceComecoDeLinha(text))
        m_lineWait->start(m_scannerEnterMs);
    else
        Leitura_codigo_barras();
}

void frmFrente::replayKey(int key, const QString& text) {
    if (key == Qt::Key_Return) {
        // A kept Enter only ends a code or a line; it never records nor takes an amount.
        const QString t = m_entry->text().trimmed();
        if (t.size() == 44 && allDigits(t))
            read(t, false);
        else if (CounterSession::pareceLinhaDigitavel(t))
            read(t, true);
        return;
    }
    m_entry->setFocus();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(m_entry, &press);
}

void frmFrente::Leitura_codigo_barras() {
    read(m_entry->text(), false);
}

void frmFrente::read(const QString& text, bool typedLine) {
    if (m_consulta)
        return;
    m_reading = true;
    const int boxes = m_scans->boxesShown();
    {
        // Whatever the read opens ignores the keys the scanner sends right after the code.
        DialogKeyGuard guard(m_ctx.dialogs, m_scannerEnterMs);
        showRead(settle(typedLine ? m_session.lerLinha(text) : m_session.ler(text)), typedLine);
    }
    m_reading = false;
    m_valor->clear();
    m_entry->setFocus();
    // The scanner's Enter after the code is ignored for a moment; when a box was answered, that
    // Enter went to the box's guard, and the cashier's next Enter records.
    if (m_scans->boxesShown() == boxes)
        m_lastScan.start();
    else
        m_lastScan.invalidate();
}

CounterSession::ReadResult frmFrente::settle(CounterSession::ReadResult r) {
    // An overdue guide waits for the operator's consent before anything is added.
    while (r.precisaConsentimento) {
        const bool yes =
            m_ctx.dialogs.notice(OverdueHandler::kFormGuia, OverdueHandler::kCaptionGuia,
                                 OverdueHandler::linhasGuia(r.vencimento, r.valor),
                                 DialogButtons::YesNo) == DialogAnswer::Yes;
        r = m_session.continuar(yes);
    }
    return r;
}

void frmFrente::refreshNetwork() {
    // Only the link the start-up made: the screen never makes one that would wait in its thread.
    if (!m_ctx.rede || !m_ctx.rede->configurada())
        return;
    const NetworkStatus::Situacao s = NetworkStatus::consultar(m_ctx);
    const QDateTime now = m_ctx.clock.now();
    m_redeAtrasada = NetworkStatus::atrasada(s, now);
    if (m_ctx.settings.emRede()) {
        m_rede->setText(s.ativa ? QStringLiteral("REDE: %1 PENDENTE(S)").arg(s.pendentes)
                                : QStringLiteral("REDE INATIVA"));
        m_rede->setVisible(NetworkStatus::mostrarRotulo(s, now));
    }
    if (m_reading || !m_session.list().isEmpty() || m_session.aguardandoConsentimento())
        return; // told between customers
    for (const QString& text : m_ctx.rede->novidades()) {
        const DialogKeyGuard guard(m_ctx.dialogs, m_scannerEnterMs);
        m_ctx.dialogs.warn(QStringLiteral("Rede"), text);
    }
}

void frmFrente::showRead(const CounterSession::ReadResult& r, bool typedLine) {
    if (r.networkChecked)
        m_rede->setVisible(r.showNetworkLabel || m_redeAtrasada);
    // A code, taken or refused, leaves the field empty for the next scan. A typed line that was
    // refused stays to be corrected, selected so that a scan replaces it.
    if (!typedLine || r.clearField || r.accepted)
        m_entry->clear();
    else
        m_entry->selectAll();
    if (r.accepted)
        fillKinds(); // the append resets the kind list
    else if (r.clearKind)
        m_kinds->setCurrentIndex(-1);
    const QString status = statusText(r.resultado);
    if (status.isEmpty())
        refreshStatus();
    else
        statusLine(status);
    refreshList();
}

void frmFrente::enter() {
    if (m_consulta)
        return;
    // The scanner's own Enter right after a code records nothing.
    if (m_lastScan.isValid() && m_lastScan.elapsed() < m_scannerEnterMs)
        return;
    const QString text = m_entry->text().trimmed();
    if (text.size() == 44 && allDigits(text)) { // a code keyed by hand
        read(text, false);
        return;
    }
    if (CounterSession::pareceLinhaDigitavel(text)) {
        read(text, true);
        return;
    }
    if (m_session.list().isEmpty())
        return;
    // An amount typed is the amount paid, as "-" takes it; the payment is recorded only when
    // it covers the total.
    if (!text.isEmpty() && (!tender() || !m_session.mayRecord()))
        return;
    record();
}

void frmFrente::record() {
    const QString change = m_session.paymentLabel();
    // The next customer's scan during the recording and its message waits for the code field.
    m_recording = true;
    m_scans->hold(true);
    const auto rows = m_session.gravar();
    m_scans->hold(false);
    m_recording = false;
    if (rows) {
        m_entry->clear();
        m_valor->clear();
        m_lastChange = change.startsWith(QLatin1String("Troco")) ? change : QString();
        QList<clsRecebimentos::Lancado> added;
        for (const RecordedReceipt& r : *rows) {
            added.append({r.idrecebe, r.autentica, r.item.descricao, r.item.valor});
        }
        m_lancadoModel->addRecorded(added);
        m_lancado->scrollToTop();
        refreshDayTotals();
        refreshList();
        refreshStatus();
    }
    m_entry->setFocus();
}

bool frmFrente::tender() {
    // "-" on an empty screen only says there is nothing to pay.
    const bool bare = m_entry->text().trimmed().isEmpty() && m_session.list().isEmpty();
    QString why;
    const auto paid =
        bare ? std::optional<Money>(Money()) : Money::parseTyped(m_entry->text(), &why);
    if (!paid || m_session.tender(*paid).state == ChangeResult::State::AmountInvalid) {
        // A fraction of a centavo is named; anything else is not a number.
        m_ctx.dialogs.warn(SystemTexts::aviso(),
                           Money::parse(m_entry->text()) && !paid
                               ? why
                               : QStringLiteral("O valor informado não é um número!!"));
        m_entry->selectAll();
        return false;
    }
    m_entry->clear();
    m_lastChange.clear();
    refreshList();
    return true;
}

void frmFrente::addTypedItem() {
    if (m_consulta)
        return;
    if (m_kinds->currentIndex() < 0) {
        m_ctx.dialogs.warn(SystemTexts::aviso(), QStringLiteral("Selecione o tipo de guia!!"));
        m_kinds->setFocus();
        return;
    }
    if (m_session.adicionarDigitado(m_kinds->currentData().toInt(), m_kinds->currentText(),
                                    Money::parseTyped(m_valor->text()))) {
        m_valor->clear();
        fillKinds();
        refreshList();
        m_entry->setFocus();
    }
}

void frmFrente::removeLast() {
    if (m_session.removerUltimo())
        refreshList();
}

void frmFrente::removeByNumber() {
    const auto answer = m_ctx.dialogs.input(QStringLiteral("Excluir Item"),
                                            QStringLiteral("Informe o número do item a excluir?"),
                                            false, QString());
    if (!answer)
        return;
    const auto r = m_session.removerNumero(*answer);
    if (r != CustomerList::RemoveResult::Removed) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), CustomerList::removeMessage(r));
        return;
    }
    refreshList();
}

void frmFrente::limparSoma() {
    if (m_session.list().isEmpty())
        return;
    if (!m_ctx.dialogs.ask(SystemTexts::aviso(), QStringLiteral("Deseja realmente limpar a soma?")))
        return;
    m_session.limparSoma();
    refreshList();
}

void frmFrente::limparIdentificacao() {
    m_entry->clear();
    m_valor->clear();
    fillKinds();
    m_rede->hide();
    m_entry->setFocus();
}

void frmFrente::carregarSoma() {
    m_session.carregarSoma();
    refreshList();
}

void frmFrente::encerrar() {
    if (m_consulta)
        return;
    CashDay& day = m_session.day();
    if (!day.podeEncerrar())
        return;
    if (!askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaEncerrar))) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::OperacaoCancelada));
        return;
    }
    if (day.encerrar()) {
        if (askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaCupomEncerramento)))
            day.imprimirEncerramento();
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::MovimentoEncerrado));
        forgetChange();
    }
    refreshStatus();
}

void frmFrente::reabrir() {
    if (m_consulta)
        return;
    CashDay& day = m_session.day();
    if (!day.podeReabrir() ||
        !askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaReabrir)))
        return;
    if (day.reabrir() &&
        askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaCupomReabertura)))
        day.imprimirReabertura();
    refreshStatus();
}

void frmFrente::recebidas() {
    // The day's list for reading; the screen still takes every key first.
    m_lancado->setFocus();
    if (!m_lancado->currentIndex().isValid() && m_lancadoModel->rowCount() > 0)
        m_lancado->setCurrentIndex(m_lancadoModel->index(0, 0));
}

void frmFrente::reautenticarUltimo() {
    PendingStampsDialog::conduzir(m_ctx.dialogs, [this](ReceiptStamps::Repetir r) {
        return m_session.reautenticarUltimo(r);
    });
    m_entry->setFocus();
}

void frmFrente::reautenticarNumero() {
    const auto answer =
        m_ctx.dialogs.input(QStringLiteral("Reautenticar"),
                            QStringLiteral("Número da autenticação:"), false, QString());
    if (!answer || answer->trimmed().isEmpty())
        return;
    bool ok = false;
    const int n = answer->trimmed().toInt(&ok);
    if (!ok || n <= 0) {
        m_ctx.dialogs.critical(SystemTexts::aviso(),
                               QStringLiteral("O valor informado não é um número!!"));
        return;
    }
    PendingStampsDialog::conduzir(m_ctx.dialogs, [this, n](ReceiptStamps::Repetir r) {
        return m_session.reautenticar(n, r);
    });
    m_entry->setFocus();
}

void frmFrente::typedLine() {
    if (m_consulta)
        return;
    frmLdg dlg(m_ctx.dialogs, this);
    if (dlg.exec() == QDialog::Accepted) {
        m_entry->clear();
        m_entry->setText(dlg.barcode()); // 44 digits: read exactly as a scanned code
    }
    m_entry->setFocus();
}

void frmFrente::avulso() {
    if (m_consulta)
        return;
    frmAvulso dlg(m_ctx, this);
    if (dlg.exec() == QDialog::Accepted) {
        settle(m_session.somaAvulso(dlg.item()));
        refreshList();
    }
    m_entry->setFocus();
}

void frmFrente::juros() {
    frmJuros dlg(m_ctx, this);
    dlg.exec();
    m_entry->setFocus();
}

void frmFrente::calculadora() {
    CalculatorDialog dlg(this);
    connect(&dlg, &CalculatorDialog::resultado, this,
            [this](const QString& v) { m_valor->setText(v); });
    dlg.exec();
    m_entry->setFocus();
}

void frmFrente::feriados() {
    if (!AdminGuard::ask(m_ctx, Act::Feriados, QStringLiteral("Feriados")))
        return; // a wrong password opens nothing, silently
    {
        const AuthorizedScope allowed(m_ctx);
        frmFeriados(m_ctx, this).exec();
    }
    m_entry->setFocus();
}

void frmFrente::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!m_session.list().isEmpty()) {
        if (m_ctx.dialogs.ask(SystemTexts::aviso(),
                              QStringLiteral("Há itens na soma que não foram gravados. "
                                             "Deseja sair assim mesmo?")))
            event->accept();
        return;
    }
    // Leaving is asked, and going back to the date screen (another operator or day) offered.
    switch (m_ctx.dialogs.message(QStringLiteral("Sair"),
                                  QStringLiteral("Deseja sair do Tolvane?\n\n"
                                                 "Sim: fecha o programa.\n"
                                                 "Não: volta à tela de data (outro operador "
                                                 "ou outro dia).\n"
                                                 "Cancelar: continua no caixa."),
                                  DialogIcon::Question, DialogButtons::YesNoCancel)) {
    case DialogAnswer::Yes:
        event->accept();
        break;
    case DialogAnswer::No:
        emit logoff();
        break;
    default:
        break;
    }
}
