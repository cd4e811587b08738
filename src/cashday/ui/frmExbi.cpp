#include "frmExbi.h"

#include "AppContext.h"
#include "CorrectionLog.h"
#include "DialogPort.h"
#include "SystemTexts.h"

#include <QDir>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextCursor>
#include <QVBoxLayout>

const QString frmExbi::kCaption = QStringLiteral("Visualizando Estornos e Alterações");

frmExbi::frmExbi(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmExbi"));
    setWindowTitle(kCaption);
    m_texto = new QPlainTextEdit(this);
    m_texto->setObjectName(QStringLiteral("txtTexto"));
    m_texto->setReadOnly(true);
    m_texto->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_texto->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_pesquisa = new QLineEdit(this);
    m_pesquisa->setObjectName(QStringLiteral("txtpesquisa"));
    auto* procura = new QPushButton(QStringLiteral("&Procurar"), this);
    procura->setObjectName(QStringLiteral("cmdProcura"));
    procura->setAutoDefault(false);
    connect(procura, &QPushButton::clicked, this, &frmExbi::procurar);
    connect(m_pesquisa, &QLineEdit::returnPressed, this, &frmExbi::procurar);
    auto* close = new QPushButton(QStringLiteral("&Fechar"), this);
    close->setObjectName(QStringLiteral("cmdFechar"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("Procurar:"), this));
    row->addWidget(m_pesquisa, 1);
    row->addWidget(procura);
    row->addWidget(close);
    auto* folder = new QLabel(this);
    folder->setObjectName(QStringLiteral("lblPasta"));
    folder->setText(QStringLiteral("Pasta: ") +
                    QDir::toNativeSeparators(CorrectionLog(ctx).folder()));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(folder);
    layout->addWidget(m_texto, 1);
    layout->addLayout(row);
    resize(820, 600);
    carregar();
    m_pesquisa->setFocus();
}

void frmExbi::carregar() {
    QStringList all;
    for (const auto& f : CorrectionLog(m_ctx).read())
        all << f.lines;
    if (all.isEmpty())
        all << QStringLiteral("Nenhum estorno ou alteração registrado.");
    m_texto->setPlainText(all.join(QLatin1Char('\n')));
}

void frmExbi::procurar() {
    const QString text = m_pesquisa->text().trimmed();
    if (text.isEmpty())
        return;
    if (m_texto->find(text))
        return;
    // From the top again once the end is reached.
    QTextCursor top = m_texto->textCursor();
    top.movePosition(QTextCursor::Start);
    m_texto->setTextCursor(top);
    if (!m_texto->find(text))
        tell(m_ctx.dialogs, SystemTexts::notice(SystemText::TextoNaoEncontrado));
}
