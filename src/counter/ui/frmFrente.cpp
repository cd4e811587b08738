#include "frmFrente.h"

#include "AppContext.h"
#include "CalculatorDialog.h"
#include "Clock.h"
#include "CounterKeys.h"
#include "CounterStamps.h"
#include "DialogPort.h"
#include "EntryReader.h"
#include "NetworkStatus.h"
#include "QtDialogPort.h"
#include "ScanBuffer.h"
#include "SystemTexts.h"
#include "Tone.h"
#include "frmAvulso.h"
#include "frmLdg.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>

namespace {
constexpr int kRedeMs = 5000; // how often the network label looks at the central and the outbox

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
    : QMainWindow(parent), m_session(session), m_ctx(session.ctx()), m_consulta(consulta),
      m_ui(this,
           [&session](qint32 antesDe, int limite) { return session.lancados(antesDe, limite); }) {
    setObjectName(QStringLiteral("frmFrente"));
    setWindowTitle(consulta ? QStringLiteral("Tolvane - Caixa (consulta)")
                            : QStringLiteral("Tolvane - Caixa"));
    EntryReader::Hooks hooks;
    hooks.shown = [this](const CounterSession::ReadResult& r, bool typed) { showRead(r, typed); };
    hooks.begins = [this] { forgetChange(); };
    hooks.boxesShown = [this] { return m_scans->boxesShown(); };
    m_reader = new EntryReader(m_session, m_consulta, m_ui, std::move(hooks), this);
    connect(m_ui.entry, &QLineEdit::textChanged, m_reader, &EntryReader::changed);
    connect(m_ui.ldg, &QPushButton::clicked, this, &frmFrente::typedLine);
    connect(m_ui.avulso, &QPushButton::clicked, this, &frmFrente::avulso);
    m_stamps =
        new CounterStamps(m_session, m_consulta, m_ui.impressora, this, [this] { backToEntry(); });
    startTimers();
    fillKinds();
    m_session.kindsFilled = [this](const GuideKinds& kinds, bool selectFirst) {
        showKinds(kinds, selectFirst);
    };
    if (m_consulta) {
        // A past day is only looked at: what cannot act here is shown disabled (the shell
        // disables the commands that change the day).
        for (QWidget* w : {static_cast<QWidget*>(m_ui.entry), static_cast<QWidget*>(m_ui.kinds),
                           static_cast<QWidget*>(m_ui.valor), static_cast<QWidget*>(m_ui.ldg),
                           static_cast<QWidget*>(m_ui.avulso)})
            w->setEnabled(false);
    }
    refreshAll();
    m_stamps->refresh();
    startKeys();
    m_ui.entry->setFocus();
    // Documents a stop left without a stamp are listed at once, beside the counter: the list
    // takes no focus, so the first scan still reaches the code field.
    QTimer::singleShot(0, this, [this] {
        if (m_stamps->unstamped() > 0)
            m_stamps->showList(false);
    });
}

frmFrente::~frmFrente() {
    delete m_keys; // no key reaches a counter half gone
    m_session.kindsFilled = nullptr;
}

void frmFrente::startTimers() {
    m_statusTimer = new QTimer(this);
    m_statusTimer->setSingleShot(true);
    connect(m_statusTimer, &QTimer::timeout, this, &frmFrente::refreshStatus);
    auto* timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("tmrDiaHora"));
    const auto tick = [this] { m_ui.showClock(m_ctx.clock.now(), m_ctx.workingDate); };
    connect(timer, &QTimer::timeout, this, tick);
    timer->start(1000);
    tick();
    auto* rede = new QTimer(this);
    rede->setObjectName(QStringLiteral("tmrRede"));
    connect(rede, &QTimer::timeout, this, &frmFrente::refreshNetwork);
    rede->start(kRedeMs);
}

void frmFrente::startKeys() {
    // The screen sees every key first, wherever the focus is inside it; the scan buffer, installed
    // after it, sees them before it and keeps a scan from any box of the counter.
    CounterKeys::Acts acts;
    acts.kind = [this] { kindKey(); };
    acts.tender = [this] { tender(); };
    acts.enter = [this] { enter(); };
    acts.addTyped = [this] { addTypedItem(); };
    acts.recording = [this] { return m_recording; };
    acts.boxOpen = [this] { return m_scans && m_scans->counterBoxOpen(); };
    acts.besideWindow = [this] { return m_stamps->list(); };
    m_keys = new CounterKeys(this, m_ui, std::move(acts));
    m_scans = new ScanBuffer(this, [this](int key, const QString& text) { replayKey(key, text); });
    m_scans->ready = [this] { return !m_reader->reading() && !m_recording; };
    setProperty(kKeepsScans, true);
}

void frmFrente::setScannerEnterWindow(int ms) {
    m_reader->setEnterWindow(ms);
}

void frmFrente::setScannerKeyGap(int ms) {
    m_reader->setKeyGap(ms);
}

void frmFrente::setPrinter(PrinterWorker* worker, AuthCounterPrinter* printer) {
    m_stamps->setPrinter(worker, printer);
}

void frmFrente::afterScreen() {
    fillKinds(); // kinds and settings may have changed
    refreshAll();
    m_ui.entry->setFocus();
}

void frmFrente::backToEntry() {
    m_ui.entry->setFocus();
}

void frmFrente::placeRibbon(QLayout* strip) {
    m_ui.placeRibbon(strip);
}

bool frmFrente::fillKinds() {
    m_ui.showKinds(m_session.kinds(), -1);
    m_kindsAreEntry = true;
    return m_ui.kinds->count() > 0;
}

void frmFrente::showKinds(const GuideKinds& kinds, bool selectFirst) {
    m_ui.showKinds(kinds, selectFirst && !kinds.isEmpty() ? 0 : -1);
    m_kindsAreEntry = false;
}

void frmFrente::refreshAll() {
    refreshList();
    refreshLancados();
    refreshStatus();
}

void frmFrente::refreshList() {
    const CustomerList& list = m_session.list();
    if (!list.isEmpty())
        m_lastChange.clear();
    m_ui.showList(list, list.isEmpty() && !m_lastChange.isEmpty() ? m_lastChange
                                                                  : m_session.paymentLabel());
}

void frmFrente::forgetChange() {
    if (m_lastChange.isEmpty())
        return;
    m_lastChange.clear();
    m_ui.troco->setText(m_session.paymentLabel());
}

void frmFrente::refreshLancados() {
    m_ui.lancadoTitle->setText(m_session.lancadosHeading());
    m_ui.lancadoModel->reload();
    refreshDayTotals();
}

// The day's count and total are the core's, read again, never kept beside it.
void frmFrente::refreshDayTotals() {
    const auto r = m_session.resumoLancados();
    m_ui.showDayTotals(r ? r->quantidade : 0, r ? r->total : Money());
}

void frmFrente::refreshStatus() {
    m_statusTimer->stop();
    m_ui.status->setText(m_consulta ? QStringLiteral("CONSULTA - ") + m_session.day().statusLabel()
                                    : m_session.day().statusLabel());
    Tone::set(m_ui.status, m_session.day().aberto() ? "pronto" : "alerta");
    m_ui.user->setText(QStringLiteral("Operador: ") + m_ctx.userName);
}

void frmFrente::statusLine(const QString& text) {
    // A scan that added nothing still gets a word and a sound, so the cashier knows it was seen.
    m_ui.status->setText(text);
    Tone::set(m_ui.status, "erro");
    QApplication::beep();
    m_statusTimer->start(8000);
}

void frmFrente::kindKey() {
    if (m_consulta)
        return;
    m_ui.entry->clear();
    if (!m_kindsAreEntry)
        fillKinds();
    m_ui.kinds->setFocus();
    if (m_ctx.settings.tecla_mais == 1)
        m_ui.kinds->showPopup();
}

void frmFrente::replayKey(int key, const QString& text) {
    if (key == Qt::Key_Return) {
        // A kept Enter only ends a code or a line; it never records nor takes an amount.
        m_reader->readTyped(m_ui.entry->text().trimmed());
        return;
    }
    m_ui.entry->setFocus();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(m_ui.entry, &press);
}

void frmFrente::refreshNetwork() {
    // Only the link the start-up made: the screen never makes one that would wait in its thread.
    if (!m_ctx.rede || !m_ctx.rede->configurada())
        return;
    const NetworkStatus::Situacao s = NetworkStatus::consultar(m_ctx);
    const QDateTime now = m_ctx.clock.now();
    m_redeAtrasada = NetworkStatus::atrasada(s, now);
    if (m_ctx.settings.emRede()) {
        m_ui.rede->setText(s.ativa ? QStringLiteral("REDE: %1 PENDENTE(S)").arg(s.pendentes)
                                   : QStringLiteral("REDE INATIVA"));
        m_ui.rede->setVisible(NetworkStatus::mostrarRotulo(s, now));
    }
    if (m_reader->reading() || !m_session.list().isEmpty() || m_session.aguardandoConsentimento())
        return; // told between customers
    for (const QString& text : m_ctx.rede->novidades()) {
        const DialogKeyGuard guard(m_ctx.dialogs, m_reader->enterWindow());
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::AvisoRede).arg(text));
    }
}

void frmFrente::showRead(const CounterSession::ReadResult& r, bool typedLine) {
    if (r.networkChecked)
        m_ui.rede->setVisible(r.showNetworkLabel || m_redeAtrasada);
    // A code, taken or refused, leaves the field empty for the next scan. A typed line that was
    // refused stays to be corrected, selected so that a scan replaces it.
    if (!typedLine || r.clearField || r.accepted)
        m_ui.entry->clear();
    else
        m_ui.entry->selectAll();
    if (r.accepted)
        fillKinds(); // the append resets the kind list
    else if (r.clearKind)
        m_ui.kinds->setCurrentIndex(-1);
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
    if (m_reader->scannersEnter())
        return;
    const QString text = m_ui.entry->text().trimmed();
    if (m_reader->readTyped(text) || m_session.list().isEmpty())
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
        m_ui.entry->clear();
        m_ui.valor->clear();
        m_lastChange = change.startsWith(QLatin1String("Troco")) ? change : QString();
        QList<clsRecebimentos::Lancado> added;
        for (const RecordedReceipt& r : *rows) {
            added.append({r.idrecebe, r.autentica, r.item.descricao, r.item.valor});
        }
        m_ui.lancadoModel->addRecorded(added);
        m_ui.lancado->scrollToTop();
        refreshDayTotals();
        refreshList();
        refreshStatus();
    }
    m_ui.entry->setFocus();
}

bool frmFrente::tender() {
    // "-" on an empty screen only says there is nothing to pay.
    const bool bare = m_ui.entry->text().trimmed().isEmpty() && m_session.list().isEmpty();
    QString why;
    const auto paid =
        bare ? std::optional<Money>(Money()) : Money::parseTyped(m_ui.entry->text(), &why);
    if (!paid || m_session.tender(*paid).state == ChangeResult::State::AmountInvalid) {
        // A fraction of a centavo is named; anything else is not a number.
        const Notice notNumber = SystemTexts::notice(SystemText::ValorPagoNaoNumero);
        tell(m_ctx.dialogs,
             Money::parse(m_ui.entry->text()) && !paid ? notNumber.with(why) : notNumber);
        m_ui.entry->selectAll();
        return false;
    }
    m_ui.entry->clear();
    m_lastChange.clear();
    refreshList();
    return true;
}

void frmFrente::addTypedItem() {
    if (m_consulta)
        return;
    if (m_ui.kinds->currentIndex() < 0) {
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::SelecioneTipoGuia));
        m_ui.kinds->setFocus();
        return;
    }
    if (m_session.adicionarDigitado(m_ui.kinds->currentData().toInt(), m_ui.kinds->currentText(),
                                    Money::parseTyped(m_ui.valor->text()))) {
        m_ui.valor->clear();
        fillKinds();
        refreshList();
        m_ui.entry->setFocus();
    }
}

void frmFrente::removeLast() {
    if (m_session.removerUltimo())
        refreshList();
}

void frmFrente::removeByNumber() {
    const Notice ask = SystemTexts::notice(SystemText::PedidoItemExcluir);
    const auto answer = m_ctx.dialogs.input(ask.title, ask.text, false, QString());
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
    if (!askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaLimparSoma)))
        return;
    m_session.limparSoma();
    refreshList();
}

void frmFrente::limparIdentificacao() {
    m_ui.entry->clear();
    m_ui.valor->clear();
    fillKinds();
    m_ui.rede->hide();
    m_ui.entry->setFocus();
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
    m_ui.lancado->setFocus();
    if (!m_ui.lancado->currentIndex().isValid() && m_ui.lancadoModel->rowCount() > 0)
        m_ui.lancado->setCurrentIndex(m_ui.lancadoModel->index(0, 0));
}

void frmFrente::typedLine() {
    if (m_consulta)
        return;
    frmLdg dlg(m_ctx.dialogs, this);
    if (dlg.exec() == QDialog::Accepted) {
        m_ui.entry->clear();
        m_ui.entry->setText(dlg.barcode()); // 44 digits: read exactly as a scanned code
    }
    m_ui.entry->setFocus();
}

void frmFrente::avulso() {
    if (m_consulta)
        return;
    frmAvulso dlg(m_ctx, this);
    if (dlg.exec() == QDialog::Accepted) {
        m_reader->settle(m_session.somaAvulso(dlg.item()));
        refreshList();
    }
    m_ui.entry->setFocus();
}

void frmFrente::calculadora() {
    CalculatorDialog dlg(this);
    connect(&dlg, &CalculatorDialog::resultado, this,
            [this](const QString& v) { m_ui.valor->setText(v); });
    dlg.exec();
    m_ui.entry->setFocus();
}

void frmFrente::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!m_session.list().isEmpty()) {
        if (askNotice(m_ctx.dialogs, SystemTexts::notice(SystemText::PerguntaSairComSoma)))
            event->accept();
        return;
    }
    // Leaving is asked, and going back to the date screen (another operator or day) offered.
    const Notice sair = SystemTexts::notice(SystemText::PerguntaSair);
    switch (m_ctx.dialogs.message(sair.title, sair.text, sair.icon, DialogButtons::YesNoCancel)) {
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
