#include "ReceiptFigures.h"

#include "DocumentValue.h"

#include <algorithm>

Money ReceiptFigures::valorFace(const clsRecebimentos& r) {
    const auto face = DocumentValue::doCodigo(r.CODBARRA);
    // A code without a value (zero), or one corrected to less than it carries, counts whole.
    if (!face || face->isZero() || *face > r.VALOR)
        return r.VALOR;
    return *face;
}

void ReceiptFigures::Kind::add(const clsRecebimentos& r) {
    const Money face = ReceiptFigures::valorFace(r);
    ++quantidade;
    valorFace += face;
    encargos += r.VALOR - face;
    total += r.VALOR;
}

ReceiptFigures ReceiptFigures::of(const QList<clsRecebimentos::ComTipo>& receipts) {
    ReceiptFigures f;
    for (const clsRecebimentos::ComTipo& c : receipts) {
        auto it = std::find_if(f.porTipo.begin(), f.porTipo.end(),
                               [&](const Kind& k) { return k.idcod == c.r.TIPO; });
        if (it == f.porTipo.end()) {
            Kind k;
            k.idcod = c.r.TIPO;
            k.descricao = c.descricao;
            f.porTipo.append(k);
            it = f.porTipo.end() - 1;
        }
        it->add(c.r);
        f.todos.add(c.r);
        if (c.r.MOMENTO.isValid())
            f.porHora[size_t(c.r.MOMENTO.time().hour())].add(c.r);
        else
            ++f.semHora;
    }
    std::sort(f.porTipo.begin(), f.porTipo.end(),
              [](const Kind& a, const Kind& b) { return a.idcod < b.idcod; });
    return f;
}
