#include "FirstRunDialog.h"

#include "AppContext.h"
#include "Clock.h"
#include "DemoData.h"
#include "DialogPort.h"
#include "FolderSetup.h"
#include "SampleSheet.h"
#include "SystemTexts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace {

QLineEdit* field(QWidget* parent, const char* name, int maxLength) {
    auto* e = new QLineEdit(parent);
    e->setObjectName(QLatin1String(name));
    e->setMaxLength(maxLength);
    return e;
}

} // namespace

FirstRunDialog::FirstRunDialog(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FirstRunDialog"));
    setWindowTitle(QStringLiteral("Tolvane - primeira vez"));
    auto* intro = new QLabel(
        QStringLiteral("A pasta do programa será criada em %1.\nInforme a prefeitura, o guichê e "
                       "a senha do administrador (ADMINISTRADOR), que entra na tela de data.")
            .arg(QDir::toNativeSeparators(ctx.folder)),
        this);
    intro->setWordWrap(true);
    m_pref = field(this, "txtpref", 60);
    m_cabecalho = field(this, "txtcabecalho", 3);
    m_guiche = field(this, "txtguiche", 1);
    // Config.ini keeps one letter or digit for the counter.
    m_guiche->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[A-Za-z0-9]")), m_guiche));
    m_senha = field(this, "txtsenha", 40);
    m_confirma = field(this, "txtconfirma", 40);
    for (QLineEdit* e : {m_senha, m_confirma})
        e->setEchoMode(QLineEdit::Password);
    m_exemplo = new QCheckBox(QStringLiteral("Gravar os tipos de guia da demonstração e uma folha "
                                             "de guias de exemplo para ler"),
                              this);
    m_exemplo->setObjectName(QStringLiteral("chkExemplo"));

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Nome da prefeitura:"), m_pref);
    form->addRow(QStringLiteral("Cabeçalho - Autent. (deve ter 3 posições):"), m_cabecalho);
    form->addRow(QStringLiteral("Guiche de Trabalho  (uma letra):"), m_guiche);
    form->addRow(QStringLiteral("Senha do administrador:"), m_senha);
    form->addRow(QStringLiteral("Confirme a senha:"), m_confirma);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* criar = buttons->addButton(QStringLiteral("&Criar"), QDialogButtonBox::AcceptRole);
    criar->setObjectName(QStringLiteral("cmdCriar"));
    criar->setDefault(true);
    QPushButton* sair = buttons->addButton(QStringLiteral("&Sair"), QDialogButtonBox::RejectRole);
    sair->setObjectName(QStringLiteral("cmdSair"));
    connect(buttons, &QDialogButtonBox::accepted, this, &FirstRunDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &FirstRunDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(form);
    layout->addWidget(m_exemplo);
    layout->addWidget(buttons);
    m_pref->setFocus();
}

void FirstRunDialog::accept() {
    const FolderSetup::Identity id{m_pref->text(), m_cabecalho->text(), m_guiche->text()};
    const FolderSetup::FirstRun r =
        FolderSetup::firstRun(m_ctx, id, m_senha->text(), m_confirma->text());
    if (!r.ok()) {
        // A password typed wrong is typed again, both times.
        if (r.outcome == FolderSetup::Outcome::PasswordsDiffer ||
            r.outcome == FolderSetup::Outcome::ShortPassword) {
            m_senha->clear();
            m_confirma->clear();
            m_senha->setFocus();
        }
        m_ctx.dialogs.warn(SystemTexts::aviso(), FolderSetup::message(m_ctx, r));
        return;
    }
    m_resumo = QStringLiteral("Pasta criada: %1.\nEntre na tela de data com a senha do "
                              "administrador.")
                   .arg(QDir::toNativeSeparators(m_ctx.folder));
    if (m_exemplo->isChecked()) {
        QString error;
        SampleSheet::Written w;
        if (DemoData::seed(m_ctx, nullptr, &error)) {
            w = SampleSheet::write(m_ctx.folder, m_ctx.clock.today());
            error = w.error;
        }
        m_resumo += QStringLiteral("\n\n") + (error.isEmpty() ? SampleSheet::where(w) : error);
    }
    QDialog::accept();
}

bool FirstRunDialog::offer(AppContext& ctx, QString* resumo) {
    if (!askNotice(ctx.dialogs, SystemTexts::notice(SystemText::PerguntaCriarPasta)
                                    .arg(QDir::toNativeSeparators(ctx.folder))))
        return false;
    FirstRunDialog dialog(ctx);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    *resumo = dialog.resumo();
    return true;
}
