// SPDX-License-Identifier: Zlib
// The page around the game. The program is tarnwick-replay: a play is the command record, and each
// command runs in an instance of its own, with a file system of its own in memory. The message of an
// Error is a sentence for the player.
"use strict";

const mostLetters = 1 << 16; // of a link's run; as in RunLink
const mostText = 1 << 20; // bytes
const mostTiles = 1 << 24, mostColumns = 16383; // of a level
const start = {x: 60, y: 984}; // of the runner, in every level
const widest = 1920; // pixels of the picture
const mostSkipped = 6000; // frames of a title; a second or two
const ownRun = "/run.txt", theirRun = "/their run.txt";

const sprites = {runner: 5, runnerCount: 6, sky: 14, tiles: 21, logo: 22}; // of EmbeddedImages
const cells = {blocks: 1, basalt: 2, sign: 3}; // columns of the sheet of tiles
const cellSide = 16; // pixels

const find = id => document.getElementById(id);
const card = find("card"), stage = find("stage");
const settings = new URLSearchParams(location.search);
const given = name => settings.has(name);

let program = null; // compiled once
let running = null; // the instance of a play that is shown
let level = null; // {path, bytes} of a dropped one
let shared = null; // {text, title, titleFrames}: the run to watch and to race

// An instance with these files; print gets each line that it prints.
function instance(files = {}, options = {}) {
    return createTarnwick({
        ...options,
        instantiateWasm(imports, receive) {
            WebAssembly.instantiate(program, imports).then(made => receive(made, program));
            return {};
        },
    }).then(module => {
        for (const [path, bytes] of Object.entries(files)) module.FS.writeFile(path, bytes);
        return module;
    });
}

// Runs a command: its status, what it printed, and the module with its files.
async function run(command, {files, canvas, started} = {}) {
    const lines = [];
    const print = line => lines.push(line);
    let stop = null;
    const stopped = new Promise((_, reject) => (stop = reject));
    const onAbort = reason => stop(new Error(`The game has stopped: ${reason}`));
    const module = await instance(files, {canvas, print, printErr: print, onAbort});
    started?.(module);
    return {status: await Promise.race([module.execute(command), stopped]), lines, module};
}

// A run as a link, and back.
async function through(stream, bytes, most) {
    const reader = new Blob([bytes]).stream().pipeThrough(stream).getReader();
    const parts = [];
    let size = 0;
    for (let part = await reader.read(); !part.done; part = await reader.read()) {
        size += part.value.length;
        if (size > most) {
            reader.cancel();
            throw new Error("The run in this link is too long.");
        }
        parts.push(part.value);
    }
    return new Uint8Array(await new Blob(parts).arrayBuffer());
}

async function linkOf(text) {
    const packed = await through(new CompressionStream("deflate-raw"), text, mostText);
    const letters = btoa(Array.from(packed, byte => String.fromCharCode(byte)).join(""));
    if (letters.length > mostLetters) throw new Error("This run is too long for a link.");
    return location.href.replace(/[?#].*/, "") + "#run=" +
        letters.replaceAll("+", "-").replaceAll("/", "_").replace(/=+$/, "");
}

async function textOf(letters) {
    if (letters.length > mostLetters) throw new Error("This link is too long.");
    const broken = new Error("This link is broken: a part of it is missing or has changed.");
    if (!/^[\w-]+$/.test(letters)) throw broken;
    let packed = "";
    try {
        packed = atob(letters.replaceAll("-", "+").replaceAll("_", "/"));
    } catch {
        throw broken;
    }
    const bytes = Uint8Array.from(packed, letter => letter.charCodeAt(0));
    return through(new DecompressionStream("deflate-raw"), bytes, mostText).catch(error => {
        throw error instanceof TypeError ? broken : error;
    });
}

const levelOptions = (on = level) => (on ? ["--level", on.path] : []);
const levelFile = (on = level) => (on ? {[on.path]: on.bytes} : {});

// What a run is worth on this level; null if the level cannot be read.
async function check(text, on = level) {
    const files = {...levelFile(on), [theirRun]: text};
    const {lines} = await run(["check", theirRun, "--json", ...levelOptions(on)], {files});
    return lines[0] === "[" ? JSON.parse(lines.join("\n"))[0] : null;
}

// Checks a run, and offers it to be watched and raced.
async function share(text) {
    const result = await check(text);
    if (!result.ok) {
        throw new Error("This run cannot be shown: " + result.problem.replace(theirRun, "it") + ".");
    }
    const end = result.goal ? `the goal after ${result.seconds.toFixed(3)} s` : "no goal";
    const title = `${result.player ? "A run by " + result.player : "A run"}: ${end}.`;
    shared = {text, title, titleFrames: result.titleFrames};
}

// The run of the link, if there is one.
async function openLink() {
    shared = null;
    const match = /^#run=(.*)$/.exec(location.hash);
    if (!match) {
        if (location.hash.length > 1) throw new Error("This link is broken: it has no run.");
        return;
    }
    await share(await textOf(match[1]));
}

// The card: a sentence, and buttons for what can be done. Any key presses the first.
function show(news, ...actions) {
    stage.hidden = true;
    card.hidden = false;
    find("news").textContent = news;
    find("buttons").replaceChildren(...actions.map(([label, act], i) => {
        const button = document.createElement("button");
        button.className = i === 0 ? "bar" : "";
        button.innerHTML = "<span></span>";
        button.firstChild.textContent = label;
        button.onclick = act;
        return button;
    }));
}

const startLabel = matchMedia("(any-pointer: coarse)").matches ? "Tap to start" : "Press any key";
const playAction = label => [label, () => play(["record", ownRun])];
const sharedActions = () => !shared ? [] : [
    ["Watch it", () => play(["watch", theirRun, "--from",
        String(Math.min(shared.titleFrames, mostSkipped))])],
    ["Race it", () => play(["race", theirRun, "--into", ownRun])],
];

function showStart(news = "") {
    if (shared) {
        show(news || shared.title, ...sharedActions(), playAction("Play"));
    } else {
        show(news, playAction(startLabel));
    }
}

async function copy(text, button) {
    let link = "";
    try {
        link = await linkOf(text);
        await navigator.clipboard.writeText(link);
        button.textContent = "Copied";
    } catch (error) {
        link ? prompt("The link:", link) : alert(error.message);
    }
}

// The file that the program writes, with an end if it has none: its last line holds for 60 frames at
// least.
function runSoFar(module, frames) {
    const text = new TextDecoder().decode(module.FS.readFile(ownRun));
    if (text.includes(" end\n")) return text;
    const last = Number(text.trimEnd().split("\n").pop().split(" ")[0]);
    return `${text}${last + 61} end\n# goal: ${frames} frames\n`;
}

// When the goal is reached, the run can be shared at once.
function watchForGoal(module) {
    if (running !== module) return;
    const frames = module._goalFrames();
    if (frames === 0) {
        setTimeout(watchForGoal, 250, module);
        return;
    }
    const button = document.createElement("button");
    button.textContent = "Copy link";
    button.onclick = () => copy(runSoFar(module, frames), button);
    find("goal").replaceChildren(`${(frames * 0.015).toFixed(3)} s `, button);
}

function pictureSize(canvas) {
    const width = Math.min(widest, Math.round(canvas.clientWidth * devicePixelRatio)) & ~1;
    return ["-w", String(width), "-h", String(Math.round(width * 9 / 16))];
}

async function play(command) {
    card.hidden = true;
    stage.hidden = false;
    find("goal").replaceChildren();
    stir();
    const canvas = document.createElement("canvas");
    canvas.tabIndex = 0;
    stage.prepend(canvas);
    let lost = "";
    canvas.addEventListener("webglcontextlost", () => {
        if (!canvas.isConnected) return;
        lost = "The browser has taken the graphics away. Start again.";
        press("Escape", true);
    });
    const files = {...levelFile(), ...(shared && {[theirRun]: shared.text})};
    const player = settings.get("player");
    const options = [...levelOptions(),
        ...(player && command[0] !== "watch" ? ["--player", player] : [])];
    const game = ["--", "-win", ...pictureSize(canvas), ...(given("nosound") ? ["-ns"] : []),
        ...(given("nomusic") ? ["-nm"] : [])];
    try {
        const done = await run([...command, ...options, ...game], {files, canvas, started(module) {
            running = module;
            canvas.focus();
            if (command[0] !== "watch") setTimeout(watchForGoal, 250, module);
        }}).finally(() => (running = null));
        await finish(command, done, lost);
    } catch (error) {
        showStart(lost || error.message);
    }
    canvas.remove();
    // A browser has only a few contexts, and takes them from pages that keep them.
    canvas.getContext("webgl")?.getExtension("WEBGL_lose_context")?.loseContext();
}

async function finish(command, {lines, module}, lost) {
    const result = /: goal, (\d+) frames, (.*) s$/m.exec(lines.join("\n"));
    if (lost || !/: (no )?goal, /m.test(lines.join("\n"))) {
        showStart(lost || "The game did not start: " + lines.at(-1));
    } else if (command[0] === "watch") {
        showStart();
    } else if (!lines.some(line => line.startsWith(ownRun + ": goal"))) {
        show("", playAction("Play again"), ...sharedActions());
    } else {
        const text = runSoFar(module, result[1]);
        await share(text);
        shared.title = `Your run: the goal after ${result[2]} s.`;
        const copied = ["Copy link", event => copy(text, event.currentTarget.firstChild)];
        show(shared.title, playAction("Play again"), copied, ...sharedActions());
    }
}

// A level is a PNG picture. This reads no more than its head.
function whatIsWrong(bytes, name) {
    const view = new DataView(bytes.buffer);
    if (bytes.length === 0) return `${name} is empty.`;
    if (bytes.length < 33 || view.getUint32(0) !== 0x89504E47 || view.getUint32(12) !== 0x49484452) {
        return `${name} is not a PNG picture.`;
    }
    const [width, height] = [view.getUint32(16), view.getUint32(20)];
    if (width <= start.x || height <= start.y) {
        return `${name} has ${width} by ${height} pixels. A level has at least ` +
            `${start.x + 1} by ${start.y + 1}: the runner starts there.`;
    }
    if (width * height > mostTiles || width > mostColumns) {
        return `${name} has too many pixels, ${width} by ${height}.`;
    }
    if (![2, 6].includes(view.getUint8(25))) {
        return `${name} has a palette or is grey. Export it as RGB.`;
    }
    return "";
}

async function levelOf(file) {
    if (file.size > 4 * mostTiles) throw new Error(`${file.name} is too large.`);
    const bytes = new Uint8Array(await file.arrayBuffer());
    const wrong = whatIsWrong(bytes, file.name);
    if (wrong) throw new Error(wrong);
    const made = {path: "/tmp/" + file.name.replace(/[^\w.-]/g, "_"), bytes};
    if (!(await check("0 end\n", made))) throw new Error(`${file.name} is broken.`);
    return made;
}

async function takeLevel(file) {
    if (!file || !program || card.hidden) return;
    for (const button of find("buttons").children) button.disabled = true; // until it is there
    try {
        level = await levelOf(file);
        await openLink();
        showStart(`${shared ? shared.title : "Level"} ${file.name}`);
    } catch (error) {
        showStart(error.message);
    }
}

// Keys and touches for the game.
function press(key, down) {
    const code = key === " " ? "Space" : key;
    window.dispatchEvent(new KeyboardEvent(down ? "keydown" : "keyup", {key, code, bubbles: true}));
}

const touched = new Map(); // the zone under each pointer that is down, if any
function touch(event) {
    if (event.type !== "pointerdown" && !touched.has(event.pointerId)) return;
    const ended = event.type === "pointerup" || event.type === "pointercancel";
    const before = touched.get(event.pointerId);
    const over = document.elementFromPoint(event.clientX, event.clientY)?.closest("[data-key]");
    const now = ended ? null : over;
    event.preventDefault();
    ended ? touched.delete(event.pointerId) : touched.set(event.pointerId, now);
    if (now === before) return;
    for (const [zone, down] of [[before, false], [now, true]]) {
        zone?.classList.toggle("held", down);
        if (zone) press(zone.dataset.key, down);
    }
}
find("zones").addEventListener("pointerdown", touch);
// The zones may be gone when a finger is lifted.
for (const type of ["pointermove", "pointerup", "pointercancel"]) addEventListener(type, touch);

addEventListener("keydown", event => {
    const quiet = ["Tab", "Shift", "Control", "Alt", "AltGraph", "Meta", "Escape"];
    const chord = event.ctrlKey || event.altKey || event.metaKey || event.repeat;
    const elsewhere = event.target.closest?.("a, button, label");
    if (card.hidden || chord || elsewhere || quiet.includes(event.key) || /^F\d/.test(event.key)) return;
    event.preventDefault();
    find("buttons").firstChild.click();
});
addEventListener("dragover", event => event.preventDefault());
addEventListener("drop", event => {
    event.preventDefault();
    takeLevel(event.dataTransfer.files[0]);
});
find("level").onchange = event => takeLevel(event.target.files[0]);
addEventListener("hashchange", () => location.reload());

find("full").hidden = !document.fullscreenEnabled;
find("full").onclick = () => {
    document.fullscreenElement ? document.exitFullscreen() : document.body.requestFullscreen();
};
find("leave").onclick = () => press("Escape", true);
// A button that was clicked would keep the keys.
stage.addEventListener("click", () => stage.querySelector("canvas")?.focus());
let stillTimer = 0;
function stir() {
    stage.classList.remove("still");
    clearTimeout(stillTimer);
    stillTimer = setTimeout(() => stage.classList.add("still"), 2000);
}
stage.addEventListener("pointermove", stir);

// The card's pictures are the game's own.
async function dress(module) {
    const blobOf = index => {
        const at = module._spriteData(index);
        return new Blob([module.HEAPU8.slice(at, at + module._spriteBytes(index))]);
    };
    const put = (name, blob) => card.parentNode.style.setProperty(
        "--" + name, `url(${URL.createObjectURL(blob)})`);
    put("sky", blobOf(sprites.sky));
    put("logo", blobOf(sprites.logo));
    const sheet = await createImageBitmap(blobOf(sprites.tiles));
    for (const [name, column] of Object.entries(cells)) {
        const cell = document.createElement("canvas");
        cell.width = cell.height = cellSide;
        cell.getContext("2d").drawImage(sheet, -column * cellSide, 0);
        cell.toBlob(blob => put(name, blob));
    }
    const steps = Array.from({length: sprites.runnerCount}, (_, i) =>
        URL.createObjectURL(blobOf(sprites.runner + i)));
    let step = 0;
    const runner = find("runner");
    const move = () => {
        if (!card.hidden) runner.src = steps[step++ % steps.length];
        runner.style.visibility = "visible";
    };
    move();
    if (!matchMedia("(prefers-reduced-motion)").matches) setInterval(move, 75);
}

async function load() {
    const bar = find("buttons").firstChild;
    try {
        if (location.protocol === "file:") {
            throw new Error("Open this page from a web server: browsers do not load programs from a file.");
        }
        const answer = await fetch("tarnwick.wasm");
        if (!answer.ok) throw new Error("tarnwick.wasm is missing.");
        program = await WebAssembly.compile(await answer.arrayBuffer());
        if (!document.createElement("canvas").getContext("webgl")) {
            throw new Error("It needs WebGL, and this browser shows none.");
        }
        instance().then(dress);
    } catch (error) {
        program = null;
        bar.firstChild.textContent = "Not loaded";
        find("name").style.color = "inherit"; // instead of the logo
        find("news").textContent = `The game could not be loaded. ${error.message}`;
        return;
    }
    try {
        await openLink();
        showStart();
    } catch (error) {
        showStart(error.message);
    }
}
load();
