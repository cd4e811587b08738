#include "EntryReader.h"

#include "AppContext.h"
#include "CounterLayout.h"
#include "DialogPort.h"
#include "OverdueHandler.h"
#include "TypedLine.h"

#include <QLineEdit>
#include <QTimer>
#include <utility>

namespace {
bool allDigits(const QString& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}
} // namespace

EntryReader::EntryReader(CounterSession& session, bool consulta, CounterLayout& ui, Hooks hooks,
                         QObject* parent)
    : QObject(parent), m_session(session), m_consulta(consulta), m_ui(ui),
      m_hooks(std::move(hooks)) {
    m_keyClock.start();
    m_lineWait = new QTimer(this);
    m_lineWait->setSingleShot(true);
    connect(m_lineWait, &QTimer::timeout, this, [this] {
        if (m_ui.entry->text().size() == 44 && !m_reading)
            Leitura_codigo_barras();
    });
}

void EntryReader::changed(const QString& text) {
    const qint64 now = m_keyClock.elapsed();
    m_lineWait->stop();
    if (text.isEmpty()) {
        m_handTyped = false;
        m_lastChangeAt = -1;
        return;
    }
    m_hooks.begins();
    // One pause longer than a scanner ever makes, and the entry is being typed by hand: it is
    // read on Enter, as a code or as a typed line.
    if (m_lastChangeAt >= 0 && now - m_lastChangeAt > m_keyGapMs)
        m_handTyped = true;
    m_lastChangeAt = now;
    // Only 44 digits are a scan: a typed line keeps its dots and spaces until its Enter. When
    // the digits are the start of a typed line keyed in quickly, the read waits a moment: a
    // 45th digit makes it a line, read on its Enter.
    if (text.size() != 44 || m_handTyped || m_reading || !allDigits(text))
        return;
    if (TypedLine::pareceComecoDeLinha(text))
        m_lineWait->start(m_enterMs);
    else
        Leitura_codigo_barras();
}

void EntryReader::Leitura_codigo_barras() {
    read(m_ui.entry->text(), false);
}

void EntryReader::read(const QString& text, bool typedLine) {
    if (m_consulta)
        return;
    m_reading = true;
    const int boxes = m_hooks.boxesShown();
    {
        // Whatever the read opens ignores the keys the scanner sends right after the code.
        DialogKeyGuard guard(m_session.ctx().dialogs, m_enterMs);
        m_hooks.shown(settle(typedLine ? m_session.lerLinha(text) : m_session.ler(text)),
                      typedLine);
    }
    m_reading = false;
    m_ui.valor->clear();
    m_ui.entry->setFocus();
    // The scanner's Enter after the code is ignored for a moment; when a box was answered, that
    // Enter went to the box's guard, and the cashier's next Enter records.
    if (m_hooks.boxesShown() == boxes)
        m_lastScan.start();
    else
        m_lastScan.invalidate();
}

bool EntryReader::readTyped(const QString& text) {
    if (text.size() == 44 && allDigits(text)) { // a code keyed by hand
        read(text, false);
        return true;
    }
    if (CounterSession::pareceLinhaDigitavel(text)) {
        read(text, true);
        return true;
    }
    return false;
}

CounterSession::ReadResult EntryReader::settle(CounterSession::ReadResult r) {
    // An overdue guide waits for the operator's consent before anything is added.
    DialogPort& dialogs = m_session.ctx().dialogs;
    while (r.precisaConsentimento) {
        const bool yes = dialogs.notice(OverdueHandler::kFormGuia, OverdueHandler::kCaptionGuia,
                                        OverdueHandler::linhasGuia(r.vencimento, r.valor),
                                        DialogButtons::YesNo) == DialogAnswer::Yes;
        r = m_session.continuar(yes);
    }
    return r;
}

bool EntryReader::scannersEnter() const {
    return m_lastScan.isValid() && m_lastScan.elapsed() < m_enterMs;
}
