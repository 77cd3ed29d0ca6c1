// SPDX-License-Identifier: MIT
/** Larynth for JavaScript: frames or phones in, 16-bit samples out.
 *
 *     import { load } from './larynth.mjs';
 *     const larynth = await load();
 *     const synthesizer = larynth.synthesizer({ sampleFreq: 16000 });
 *     const samples = synthesizer.render([{ length: 1600, F0: 110, AV: 1000, F1: 700, BW1: 90 }]);
 *     synthesizer.delete();
 *     for (const { samples, words } of larynth.speak('həˈloʊ ˈwɜːld.')) play(samples);
 *
 * Failures are exceptions of class Error that say what was expected. One module renders one thing at a time;
 * its noise generator is one for all of its synthesizers. larynth-core.mjs and larynth-core.wasm lie beside
 * this file.
 */
import makeCore from './larynth-core.mjs';

/** Hz, of all that speak() gives. */
export const speechSampleFreq = 16000;

const failed = -2, over = -1;

async function coreBytes() {
    const url = new URL('larynth-core.wasm', import.meta.url);
    if (url.protocol === 'file:') return (await import('node:fs/promises')).readFile(url);
    const answer = await fetch(url);
    if (!answer.ok) throw new Error(`${url}: expected the module, found status ${answer.status}`);
    return answer.arrayBuffer();
}

/** Loads the module; `wasmBinary` are its bytes, else they are read from beside this file. */
export async function load({ wasmBinary } = {}) {
    return new Larynth(await makeCore({ wasmBinary: wasmBinary ?? await coreBytes() }));
}

class Larynth {
    #core;

    constructor(core) {
        this.#core = core;
        /** Names of a frame's items, as the frame table has them. */
        this.items = [];
        for (let name; (name = core._LarynthItemName(this.items.length)) !== 0;) {
            this.items.push(core.UTF8ToString(name));
        }
    }

    /** A synthesizer for frames. sampleFreq in Hz; tract 'resonator' or 'filter'; volume and outputGain are
     * linear factors; voice is what a voice file holds, as an object. */
    synthesizer({ sampleFreq = 11025, tract = 'resonator', volume = 1, outputGain = 1, voice } = {}) {
        return new Synthesizer(this.#core, this.items, { sampleFreq, tract, volume, outputGain, voice });
    }

    /** Puts the noise generator into a state, 0 to 2^32 - 1: from then on the same input gives the same. */
    seed(state) {
        this.#core._LarynthSeedNoise(state);
    }

    /** Speaks phones: the samples come in chunks of some tens of milliseconds, each with the words that begin
     * in it and how many of its samples are in front of them. form is 'ipa' or 'arpabet'; speaker 'man',
     * 'woman' or 'whisper'; rate in words a minute, 80 to 600; pitch, range and volume are factors. */
    *speak(phones, { form = 'ipa', speaker = 'man', rate = 175, pitch = 1, range = 1, volume = 1 } = {}) {
        const core = this.#core;
        const voice = withText(core, speaker, name => core._LarynthNewSpeaker(name, rate, pitch, range, volume));
        if (voice === 0) throw failure(core);
        try {
            check(core, withText(core, phones, text => core._LarynthBegin(voice, text, form === 'ipa')));
            for (let count; (count = check(core, core._LarynthNextChunk(voice))) !== over;) {
                const words = [];
                for (let word; (word = core._LarynthWord(voice, words.length)) !== 0;) {
                    words.push({ text: core.UTF8ToString(word), sample: core._LarynthWordPlace(voice, words.length) });
                }
                yield { samples: samplesAt(core, core._LarynthChunkSamples(voice), count), words };
            }
        } finally {
            core._LarynthDeleteSpeaker(voice);
        }
    }
}

class Synthesizer {
    #core;
    #object;
    #numbers;
    #initial;

    constructor(core, items, { sampleFreq, tract, volume, outputGain, voice }) {
        this.#core = core;
        this.#numbers = new Map(items.map((name, number) => [name, number]));
        this.#object = core._LarynthNewSynthesizer(sampleFreq, tract === 'filter', volume, outputGain);
        if (this.#object === 0) throw failure(core);
        this.#initial = this.#values().slice();
        if (voice) this.#setVoice(JSON.stringify(voice));
    }

    #setVoice(voice) {
        const result = withText(this.#core, voice, text => this.#core._LarynthSetVoice(this.#object, text));
        if (result === failed) {
            this.delete();
            throw failure(this.#core);
        }
    }

    /** The samples of frames: objects with length (samples) and items by name; what a frame does not name is
     * as in a new packet. The synthesizer's state runs on from call to call. */
    render(frames) {
        const chunks = [];
        for (const { length, ...items } of frames) {
            const values = this.#values();
            values.set(this.#initial);
            for (const [name, value] of Object.entries(items)) {
                const number = this.#numbers.get(name);
                if (number === undefined) throw new Error(`expected the name of an item, found ${name}`);
                values[number] = value;
            }
            const count = check(this.#core, this.#core._LarynthRenderFrame(this.#object, length));
            chunks.push(samplesAt(this.#core, this.#core._LarynthFrameSamples(this.#object), count));
        }
        const all = new Int16Array(chunks.reduce((sum, chunk) => sum + chunk.length, 0));
        let end = 0;
        for (const chunk of chunks) {
            all.set(chunk, end);
            end += chunk.length;
        }
        return all;
    }

    /** Gives the synthesizer's memory back; it cannot be used any more. */
    delete() {
        this.#core._LarynthDeleteSynthesizer(this.#object);
        this.#object = 0;
    }

    // Looked up each time: the memory moves when it grows.
    #values() {
        const first = this.#core._LarynthItems(this.#object) / Float64Array.BYTES_PER_ELEMENT;
        return this.#core.HEAPF64.subarray(first, first + this.#numbers.size);
    }
}

function failure(core) {
    return new Error(core.UTF8ToString(core._LarynthErrorText()));
}

function check(core, result) {
    if (result === failed) throw failure(core);
    return result;
}

/** The result of `use` for the address of a text, which is valid meanwhile. */
function withText(core, text, use) {
    const size = core.lengthBytesUTF8(text) + 1;
    const address = core._malloc(size);
    try {
        core.stringToUTF8(text, address, size);
        return use(address);
    } finally {
        core._free(address);
    }
}

function samplesAt(core, address, count) {
    const first = address / Int16Array.BYTES_PER_ELEMENT;
    return core.HEAP16.slice(first, first + count);
}
