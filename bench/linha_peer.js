// Answers each line of standard input with one of the two npm libraries that bench_linha compares
// against `tolvane linha -`:
//   node linha_peer.js brazilian-utils   1 or 0 per line (isValidBoleto)
//   node linha_peer.js boleto-utils      the barcode per line (linhaDigitavel2CodBarras)
// The whole input is read at once and the answers written at once, the fastest way for them.
'use strict';
const fs = require('fs');

let answer;
if (process.argv[2] === 'brazilian-utils') {
    const { isValidBoleto } = require('@brazilian-utils/brazilian-utils');
    answer = (line) => (isValidBoleto(line) ? '1' : '0');
} else if (process.argv[2] === 'boleto-utils') {
    const { linhaDigitavel2CodBarras } = require('@mrmgomes/boleto-utils');
    answer = (line) => {
        try {
            return linhaDigitavel2CodBarras(line);
        } catch (e) {
            return '';
        }
    };
} else {
    process.stderr.write('uso: node linha_peer.js brazilian-utils|boleto-utils\n');
    process.exit(2);
}

const lines = fs.readFileSync(0, 'utf8').split('\n');
if (lines.length > 0 && lines[lines.length - 1] === '') lines.pop();
const out = new Array(lines.length);
for (let i = 0; i < lines.length; i++) out[i] = answer(lines[i]);
fs.writeSync(1, out.join('\n') + '\n');
