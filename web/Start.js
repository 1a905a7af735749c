// SPDX-License-Identifier: Zlib
// At the start of the module. Adds module.execute(ARGUMENTS), which runs the program and returns a
// promise of its exit status. A module can run it once.
Module["preRun"] = [].concat(Module["preRun"] || [], function () {
    // The program looks for its data beside itself.
    FS.mkdirTree("/proc/self");
    FS.symlink("/game/tarnwick", "/proc/self/exe");
});

Module["execute"] = function (commandArguments) {
    const pointers = ["tarnwick"].concat(commandArguments).map((word) => allocateUTF8(word));
    const list = _malloc(4 * pointers.length + 4);
    HEAP32.set(pointers.concat(0), list >> 2);
    return ccall("main", "number", ["number", "number"], [pointers.length, list], { async: true });
};
