#include "frmAtualiza.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "Options.h"
#include "UpdateCheck.h"

#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmAtualiza::frmAtualiza(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmAtualiza"));
    setWindowTitle(QStringLiteral("Atualização do Sistema"));
    chooseFolder = [](QWidget* p, const QString& title, const QString& start) {
        return QFileDialog::getExistingDirectory(p, title, start);
    };
    m_caminho =
        new QLineEdit(ctx.option(QStringLiteral("Opcoes"), QStringLiteral("Atualiza")), this);
    m_caminho->setObjectName(QStringLiteral("txtCaminho"));
    m_caminho->setMinimumWidth(360);
    auto* abrir = new QPushButton(QStringLiteral("..."), this);
    abrir->setObjectName(QStringLiteral("cmdAbrir"));
    abrir->setMaximumWidth(40);
    connect(abrir, &QPushButton::clicked, this, [this] {
        const QString chosen = chooseFolder(this, QStringLiteral("Procura destino..."),
                                            Options::resolve(m_ctx, m_caminho->text()));
        if (!chosen.isEmpty())
            m_caminho->setText(QDir::toNativeSeparators(Options::withSeparator(chosen)));
    });
    auto* gravarButton = new QPushButton(QStringLiteral("&Gravar"), this);
    gravarButton->setObjectName(QStringLiteral("cmdGravar"));
    connect(gravarButton, &QPushButton::clicked, this, &frmAtualiza::gravar);
    auto* cancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
    cancelar->setObjectName(QStringLiteral("cmdCancelar"));
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
    auto* versao =
        new QLabel(QStringLiteral("Versão em uso: %1").arg(UpdateCheck::runningVersion()), this);
    versao->setObjectName(QStringLiteral("lblVersao"));

    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Pasta de atualização:"), this), 0, 0);
    grid->addWidget(m_caminho, 0, 1);
    grid->addWidget(abrir, 0, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(versao);
    buttons->addStretch();
    buttons->addWidget(gravarButton);
    buttons->addWidget(cancelar);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);
}

void frmAtualiza::gravar() {
    const Options::Result r = Options::gravar(
        m_ctx, {{QStringLiteral("Opcoes"), QStringLiteral("Atualiza"), m_caminho->text()}});
    if (r.problem || !r.written) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), r.problem ? Options::message(*r.problem)
                                                               : Options::notWritten(m_ctx));
        return;
    }
    accept();
}
