// SPDX-License-Identifier: Zlib
// The half of Sdl.cpp that speaks to the browser. The page may give these as options of the module:
//   canvas     where the game is shown
//   nextFrame  instead of requestAnimationFrame
//   onFrame    called for each frame with the milliseconds that the game itself took for it
mergeInto(LibraryManager.library, {
    $browserWindow: {
        listeners: null, // an AbortController while the window is open
        pressed: null, // symbols of keys that are down, a Map by their code
        buttons: [], // of each gamepad: which are down
        awakeSince: 0, // ms
        busy: 0, // ms of the present frame

        symbols: { Escape: 27, ArrowUp: 273, ArrowDown: 274, ArrowRight: 275, ArrowLeft: 276 },

        // The number of a key as the game knows it; 0 for one that the game does not use.
        symbolOf: function (event) {
            const key = event.key;
            if (key.length === 1) {
                const code = key.toLowerCase().charCodeAt(0);
                return code < 127 ? code : 0;
            }
            return browserWindow.symbols[key] || 0;
        },

        isForPage: function (event) {
            const target = event.target;
            return event.ctrlKey || event.altKey || event.metaKey || /^F\d/.test(event.key) ||
                (target instanceof Element && target.closest("a, button, input, select, textarea"));
        },

        keyDown: function (event) {
            if (browserWindow.isForPage(event)) return;
            event.preventDefault();
            if (event.repeat || browserWindow.pressed.has(event.code)) return;
            const symbol = browserWindow.symbolOf(event);
            browserWindow.pressed.set(event.code, symbol);
            _takeKey(symbol, true);
        },

        keyUp: function (event) {
            const symbol = browserWindow.pressed.get(event.code);
            if (symbol === undefined) return;
            browserWindow.pressed.delete(event.code);
            _takeKey(symbol, false);
        },

        // The browser does not report keys that are released in another window.
        releaseAll: function () {
            browserWindow.pressed.forEach(function (symbol) {
                _takeKey(symbol, false);
            });
            browserWindow.pressed.clear();
        },

        // Waits until start's argument is called.
        sleep: function (start) {
            return Asyncify.handleSleep(function (wake) {
                browserWindow.busy += performance.now() - browserWindow.awakeSince;
                start(function () {
                    browserWindow.awakeSince = performance.now();
                    wake();
                });
            });
        },
    },

    openCanvas__deps: ["$picture"],
    openCanvas: function (width, height, samples) {
        const canvas = Module["canvas"];
        if (!canvas) return 0;
        canvas.width = width;
        canvas.height = height;
        return picture.open(canvas, samples) ? 1 : 0;
    },

    listenToKeys__deps: ["$browserWindow"],
    listenToKeys: function () {
        browserWindow.listeners = new AbortController();
        browserWindow.pressed = new Map();
        browserWindow.awakeSince = performance.now();
        const until = { signal: browserWindow.listeners.signal };
        window.addEventListener("keydown", browserWindow.keyDown, until);
        window.addEventListener("keyup", browserWindow.keyUp, until);
        window.addEventListener("blur", browserWindow.releaseAll, until);
    },

    closeWindow__deps: ["$browserWindow"],
    closeWindow: function () {
        if (browserWindow.listeners) browserWindow.listeners.abort();
        browserWindow.listeners = null;
    },

    readGamepads__deps: ["$browserWindow"],
    readGamepads: function () {
        let gamepads = [];
        try {
            gamepads = navigator.getGamepads();
        } catch (refused) { // to a page without encryption, or in another page
            return;
        }
        for (let number = 0; number < gamepads.length; ++number) {
            const gamepad = gamepads[number];
            const before = browserWindow.buttons[number] || [];
            const now = gamepad ? gamepad.buttons.map((button) => button.pressed) : [];
            for (let button = 0; button < Math.max(before.length, now.length); ++button) {
                if (!before[button] !== !now[button]) {
                    _takeGamepadButton(number, button, !!now[button]);
                }
            }
            browserWindow.buttons[number] = now;
        }
    },

    waitFor__deps: ["$browserWindow"],
    waitFor: function (milliseconds) {
        return browserWindow.sleep((wake) => setTimeout(wake, milliseconds));
    },

    waitForFrame__deps: ["$browserWindow"],
    waitForFrame: function () {
        return browserWindow.sleep(function (wake) {
            if (Module["onFrame"]) Module["onFrame"](browserWindow.busy);
            browserWindow.busy = 0;
            (Module["nextFrame"] || requestAnimationFrame)(wake);
        });
    },
});
