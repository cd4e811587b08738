#include "Tone.h"

#include <QStyle>
#include <QVariant>
#include <QWidget>

void Tone::set(QWidget* w, const char* tone) {
    if (w->property("tom").toByteArray() == tone)
        return;
    w->setProperty("tom", QByteArray(tone));
    // A style sheet reads a property only when the widget is polished again.
    w->style()->unpolish(w);
    w->style()->polish(w);
    w->update();
}
