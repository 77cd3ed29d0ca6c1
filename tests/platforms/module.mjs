// SPDX-License-Identifier: MIT
// usage: module.mjs MODULE EXAMPLES LIST. Holds what the JavaScript module gives against the list of hashes: an example,
// frame by frame, and speech. Then failures: each is an exception, and the module goes on.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';

const [module, examples, list] = process.argv.slice(2);
const { load } = await import(module);
const larynth = await load();
const listed = readFileSync(list, 'utf8');

function hash(samples) {  // FNV-1a of 64 bits
    let value = 0xCBF29CE484222325n;
    for (const byte of new Uint8Array(samples.buffer, samples.byteOffset, samples.byteLength)) {
        value = BigInt.asUintN(64, (value ^ BigInt(byte)) * 0x100000001B3n);
    }
    return value.toString(16).padStart(16, '0');
}

function readTable(path) {
    const lines = readFileSync(path, 'utf8').split('\n').map(line => line.trim()).filter(line => line && line[0] !== '#');
    const names = lines[0].split(',').map(name => name.trim());
    const row = {};
    return lines.slice(1).map(line => {
        line.split(',').forEach((field, i) => { if (field.trim() !== '') row[names[i]] = Number(field); });
        const { FrameLen: length, SampleFreq: sampleFreq, Marker, ...items } = row;
        return { sampleFreq, frame: { length, ...items } };
    });
}

const table = readTable(`${examples}/word_married.csv`);
const synthesizer = larynth.synthesizer({ sampleFreq: table[0].sampleFreq });
larynth.seed(1);
const example = hash(synthesizer.render(table.map(row => row.frame)));
assert.ok(listed.includes(`example word_married ${example}\n`), `the example's samples have the hash ${example}`);

const phones = 'ðə ˈkwɪk ˌbraʊn ˈfɑks, ˈdʒʌmps ˈoʊvɚ ðə ˈleɪzi ˈdɔɡ. ˈɪz ˈðɪs ə ˈtʃeɪndʒ?';
larynth.seed(1);
const chunks = [...larynth.speak(phones, { speaker: 'woman', rate: 175, pitch: 1 / 3 + 175 / 200 })];
const speech = hash(Int16Array.from(chunks.flatMap(chunk => [...chunk.samples])));
assert.match(listed, new RegExp(`speech woman at 175 .* samples ${speech}\n`), `speech has the hash ${speech}`);
const words = chunks.flatMap(chunk => chunk.words.map(word => word.text));
assert.deepEqual(words, phones.split(' ').map(word => word.replace(/[,.?]/, '')));

assert.throws(() => synthesizer.render([{ length: 10, XX: 1 }]), /expected the name of an item, found XX/);
assert.throws(() => synthesizer.render([{ length: 10, F0: NaN }]), /F0: expected a finite number/);
assert.throws(() => larynth.synthesizer({ sampleFreq: 0 }), /sample frequency/);
assert.throws(() => larynth.synthesizer({ voice: { wave: [] } }), /expected numbers/);
assert.throws(() => [...larynth.speak('h%')], /phones:1:2: expected a phone/);
assert.throws(() => [...larynth.speak('a', { speaker: 'nobody' })], /man, woman, whisper/);
assert.equal(synthesizer.render([{ length: 7 }]).length, 7);
synthesizer.delete();
