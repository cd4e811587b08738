#pragma once

class QWidget;

// The colour a text takes for what it says ("pronto", "alerta", "erro", "espera", "falta",
// "passado", "data", "apagado", "dica"). The skin gives each tone its colours
// (QLabel[tom="alerta"] { ... }), so a status reads on a light and on a dark skin alike;
// an empty tone gives the skin's ordinary text.
namespace Tone {
void set(QWidget* w, const char* tone);
}
