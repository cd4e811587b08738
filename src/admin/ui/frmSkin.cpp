#include "frmSkin.h"
#include "SystemTexts.h"

#include "AppContext.h"
#include "DialogPort.h"
#include "Options.h"
#include "Skin.h"
#include "SkinLook.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmSkin::frmSkin(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("frmSkin"));
    setWindowTitle(QStringLiteral("Aparência"));
    chooseFile = [](QWidget* p, const QString& start) {
        return QFileDialog::getOpenFileName(p, QStringLiteral("Aparência"), start,
                                            QStringLiteral("Skin (*.qss *.skn)"));
    };
    m_shipped = new QComboBox(this);
    m_shipped->setObjectName(QStringLiteral("cmbSkins"));
    m_shipped->addItem(QStringLiteral("(escolha)"), QString());
    for (const auto& [name, path] : Skin::shipped())
        m_shipped->addItem(name, path);
    m_path = new QLineEdit(ctx.option(QStringLiteral("Skin"), QStringLiteral("nome")), this);
    m_path->setObjectName(QStringLiteral("Text1"));
    m_path->setMinimumWidth(360);
    m_path->setPlaceholderText(QStringLiteral("vazio: a aparência padrão"));
    connect(m_shipped, &QComboBox::activated, this, [this](int i) {
        if (i > 0)
            m_path->setText(m_shipped->itemData(i).toString());
    });
    auto* browse = new QPushButton(QStringLiteral("..."), this);
    browse->setObjectName(QStringLiteral("cmdCaminho"));
    browse->setMaximumWidth(40);
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString chosen = chooseFile(this, Options::resolve(m_ctx, m_path->text()));
        if (!chosen.isEmpty()) // a cancelled dialog leaves the path as it was
            m_path->setText(QDir::toNativeSeparators(chosen));
    });
    auto* gravarButton = new QPushButton(QStringLiteral("&Gravar"), this);
    gravarButton->setObjectName(QStringLiteral("cmdGravar"));
    connect(gravarButton, &QPushButton::clicked, this, &frmSkin::gravar);
    auto* cancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
    cancelar->setObjectName(QStringLiteral("cmdCancelar"));
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);

    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Aparências do programa:"), this), 0, 0);
    grid->addWidget(m_shipped, 0, 1, 1, 2);
    grid->addWidget(new QLabel(QStringLiteral("Arquivo:"), this), 1, 0);
    grid->addWidget(m_path, 1, 1);
    grid->addWidget(browse, 1, 2);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(gravarButton);
    buttons->addWidget(cancelar);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(buttons);
}

void frmSkin::gravar() {
    const Options::Result r =
        Options::gravar(m_ctx, {{QStringLiteral("Skin"), QStringLiteral("nome"), m_path->text()}});
    if (r.problem) {
        m_ctx.dialogs.warn(SystemTexts::aviso(), Options::message(*r.problem));
        m_path->setFocus();
        return;
    }
    if (!r.written) {
        m_ctx.dialogs.critical(SystemTexts::aviso(), Options::notWritten(m_ctx));
        return;
    }
    SkinLook::apply(m_ctx);
    accept();
}
