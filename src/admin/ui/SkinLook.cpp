#include "SkinLook.h"

#include "Skin.h"

#include <QApplication>

void SkinLook::apply(AppContext& ctx) {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance()))
        app->setStyleSheet(Skin::current(ctx).styleSheet);
}
