// SPDX-License-Identifier: Zlib
// The half of PortAudio.cpp that speaks to the browser. A browser starts sound only after a key or a
// click, and the clock of the music waits for that. In a hidden tab the sound pauses.
//
// Module.sound is { context, output, blocks } while the stream is open: the AudioContext, the node
// that the sound comes from, and how many blocks the game has made.
mergeInto(LibraryManager.library, {
    $sound: {
        blockFrames: 512,
        blocksAhead: 4, // 46 ms
        listeners: null, // an AbortController while the stream is open

        isOpen: function (context) {
            return Module["sound"] && Module["sound"]["context"] === context;
        },

        // A block of interleaved samples, valid until the next.
        makeBlock: function (frames) {
            const start = _fillSound(frames) >> 2;
            ++Module["sound"]["blocks"];
            return HEAPF32.subarray(start, start + 2 * frames);
        },

        wakeOrPause: function () {
            const context = Module["sound"]["context"];
            const wanted = document.hidden ? context.suspend() : context.resume();
            // The stream may be closed before the browser allows sound.
            wanted.catch(function () {});
        },

        openWorklet: function (context, url) {
            return context.audioWorklet.addModule(url).then(function () {
                if (!sound.isOpen(context)) return;
                const node = new AudioWorkletNode(context, "player", {
                    numberOfInputs: 0,
                    outputChannelCount: [2],
                });
                const send = function () {
                    if (!sound.listeners) return;
                    const block = sound.makeBlock(sound.blockFrames).slice();
                    node.port.postMessage(block, [block.buffer]);
                };
                node.port.onmessage = send;
                for (let i = 0; i < sound.blocksAhead; ++i) send();
                sound.connect(context, node);
            });
        },

        // For browsers without worklets, and for pages without https, which have none.
        openScript: function (context) {
            const frames = 1024;
            const node = context.createScriptProcessor(frames, 0, 2);
            node.onaudioprocess = function (event) {
                const block = sound.makeBlock(frames);
                for (let channel = 0; channel < 2; ++channel) {
                    const target = event.outputBuffer.getChannelData(channel);
                    for (let i = 0; i < frames; ++i) target[i] = block[2 * i + channel];
                }
            };
            sound.connect(context, node);
        },

        connect: function (context, node) {
            node.connect(context.destination);
            Module["sound"]["output"] = node;
        },
    },

    startSound__deps: ["$sound"],
    startSound: function (rate, player) {
        let context;
        try {
            context = new AudioContext({ sampleRate: rate, latencyHint: "interactive" });
        } catch (error) {
            return 0;
        }
        Module["sound"] = { context: context, output: null, blocks: 0 };
        if (context.audioWorklet) {
            const source = new Blob([UTF8ToString(player)], { type: "text/javascript" });
            const url = URL.createObjectURL(source);
            sound.openWorklet(context, url).catch(function () {
                // A worklet that is still loading fails if the stream is closed.
                if (sound.isOpen(context)) sound.openScript(context);
            }).finally(() => URL.revokeObjectURL(url));
        } else {
            sound.openScript(context);
        }
        sound.listeners = new AbortController();
        const until = { signal: sound.listeners.signal };
        ["keydown", "pointerdown", "touchend"].forEach(function (kind) {
            window.addEventListener(kind, sound.wakeOrPause, until);
        });
        document.addEventListener("visibilitychange", sound.wakeOrPause, until);
        sound.wakeOrPause();
        return 1;
    },

    stopSound__deps: ["$sound"],
    stopSound: function () {
        sound.listeners.abort();
        sound.listeners = null;
        const output = Module["sound"]["output"];
        if (output) output.disconnect();
        if (output && output.onaudioprocess) output.onaudioprocess = null;
        Module["sound"]["context"].close();
        Module["sound"] = null;
    },
});
