#pragma once

#include <QString>
#include <QtGlobal>

// The process-wide settings loaded from Config.ini by Carrega_config. Keys read at the moment of
// use (Path1, caminho_soma, nome_banco ...) are not here: their users read them each time.
struct Settings {
    QString guiche;                   // [Export] guiche
    QString mensagem;                 // [Mensagem] mensagem
    QString cabecalho;                // [Mensagem] cabecalho
    QString pref;                     // [Mensagem] pref
    qint16 soma = 0;                  // [Reserva] soma
    QString guiche2;                  // [Export] guiche, loaded a second time into its own setting
    QString Path3;                    // [Export] Path3
    qint16 juros = 0;                 // [Opcoes] juros
    QString Path2;                    // [Export] Path2
    QString impressora;               // [Print] impressora
    QString modo;                     // [Print] modo
    QString modo_print;               // [Print] modo_print
    qint16 print_cupom = 0;           // [Print] print_cupom
    qint16 opcoes_porta = 0;          // [Opcoes] porta
    QString porta;                    // [Print] porta
    QString impressora_autenticadora; // [Print] impressora_autenticadora
    QString impressora_padrao;        // [Print] impressora_padrao
    qint16 tecla_mais = 0;            // [Export] tecla_mais
    qint16 lineFeed = 0;              // [Print] lineFeed
    qint16 disableEsc = 0;            // [Print] disableEsc
    QString ip;                       // [Print] ip, never null
    qint16 rede = 0;                  // [Export] rede, by its concatenation rule

    // The flags as the core asks them, never as numbers or texts.
    bool imprimeCupom() const { return print_cupom == 1; }            // controle diário, tape
    bool usaAutenticadora() const { return modoAutenticadora(modo); } // [Print] modo "1"
    bool emRede() const { return rede == 1; }                         // the central is asked
    static bool modoAutenticadora(const QString& modo) {
        return modo.trimmed() == QLatin1String("1");
    }
};

// Loads every start-up key of Config.ini into `s`, in the program's fixed order. Integer keys
// that do not convert keep their previous value. Answers false only when the file is there but
// is not read (not a regular file, or over 1 MB: IniFile::readProblem says which).
bool Carrega_config(const QString& iniPath, Settings& s);

// [Reserva] itens: codes of kinds of money separated by ";", "," or blanks, or nothing (every
// kind). Anything else (a folder, as an earlier options save wrote there) is not such a list.
bool isMoneyKindList(const QString& value);

// The whole-number conversion of the settings: optional blanks and sign, digits, 16-bit range.
bool toInt16(const QString& text, qint16& out);
