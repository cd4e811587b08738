#pragma once

#include <QString>

// The check digits of collection codes (modulo 10 and 11) and of bank slips (modulo 11), and the
// modulo 10 of a typed line's fields.
QString Modulo10_arrecadacao(const QString& digits); // empty when not all digits
QString Modulo11_arrecadacao(const QString& digits); // empty when not all digits
int Modulo11_boleto(const QString& digits43);        // 1 to 9; 0 never produced
int Modulo10_campo(const QString& digits); // bank-slip line field, 0 to 9; -1 when not digits

bool isAllDigits(const QString& text);
