// SPDX-License-Identifier: Zlib
// The half of FixedPipeline.cpp that speaks to WebGL. One program paints everything: a textured
// triangle times a colour. Texture 0 is a white pixel, so plain shapes need no second program.
mergeInto(LibraryManager.library, {
    $picture: {
        gl: null,
        textures: [],
        cornerBytes: 48,

        // Opens the picture on a canvas; false without WebGL.
        open: function (canvas, samples) {
            const gl = canvas.getContext("webgl", {
                alpha: false,
                antialias: samples > 0,
                depth: false,
                powerPreference: "high-performance",
            });
            if (!gl || gl.isContextLost()) return false;
            picture.gl = gl;
            const program = gl.createProgram();
            const add = function (kind, text) {
                const shader = gl.createShader(kind);
                gl.shaderSource(shader, text);
                gl.compileShader(shader);
                gl.attachShader(program, shader);
            };
            add(
                gl.VERTEX_SHADER,
                "attribute vec2 place; attribute vec3 uPlane, vPlane; attribute vec4 shade;" +
                    "varying highp vec3 u, v; varying highp vec4 colour;" +
                    "void main() { u = uPlane; v = vPlane; colour = shade;" +
                    "gl_Position = vec4(place, 0, 1); }"
            );
            add(
                gl.FRAGMENT_SHADER,
                "precision highp float; varying highp vec3 u, v; varying highp vec4 colour;" +
                    "uniform sampler2D base; uniform float leastAlpha;" +
                    "void main() { vec3 pixel = vec3(gl_FragCoord.xy, 1);" +
                    "gl_FragColor = colour * texture2D(base, vec2(dot(pixel, u), dot(pixel, v)));" +
                    "if (gl_FragColor.a <= leastAlpha) discard; }"
            );
            ["place", "uPlane", "vPlane", "shade"].forEach(function (name, place) {
                gl.bindAttribLocation(program, place, name);
            });
            gl.linkProgram(program);
            gl.useProgram(program);
            picture.leastAlpha = gl.getUniformLocation(program, "leastAlpha");

            gl.bindBuffer(gl.ARRAY_BUFFER, gl.createBuffer());
            gl.bindBuffer(gl.ELEMENT_ARRAY_BUFFER, gl.createBuffer());
            [2, 3, 3, 4].reduce(function (start, floats, place) {
                gl.vertexAttribPointer(place, floats, gl.FLOAT, false, picture.cornerBytes, start);
                gl.enableVertexAttribArray(place);
                return start + 4 * floats;
            }, 0);

            const white = gl.createTexture();
            picture.textures = [white];
            gl.bindTexture(gl.TEXTURE_2D, white);
            gl.texImage2D(gl.TEXTURE_2D, 0, gl.RGBA, 1, 1, 0, gl.RGBA, gl.UNSIGNED_BYTE,
                          new Uint8Array([255, 255, 255, 255]));
            gl.texParameteri(gl.TEXTURE_2D, gl.TEXTURE_MIN_FILTER, gl.NEAREST);
            return true;
        },

        bind: function (name) {
            picture.gl.bindTexture(picture.gl.TEXTURE_2D, picture.textures[name] || null);
        },
    },

    paintCollected__deps: ["$picture"],
    paintCollected: function (corners, cornerCount, indices, indexCount, commands, commandCount) {
        const gl = picture.gl;
        const end = corners + cornerCount * picture.cornerBytes;
        gl.bufferData(gl.ARRAY_BUFFER, HEAPU8.subarray(corners, end), gl.STREAM_DRAW);
        gl.bufferData(gl.ELEMENT_ARRAY_BUFFER, HEAPU8.subarray(indices, indices + indexCount * 2),
                      gl.STREAM_DRAW);
        let first = 0;
        for (let command = commands >> 2; commandCount-- > 0; command += 8) {
            picture.bind(HEAP32[command]);
            if (HEAP32[command + 1]) {
                gl.enable(gl.BLEND);
                gl.blendFunc(HEAP32[command + 2], HEAP32[command + 3]);
                gl.blendEquation(HEAP32[command + 4]);
                gl.blendColor(0, 0, 0, HEAPF32[command + 5]);
            } else {
                gl.disable(gl.BLEND);
            }
            gl.uniform1f(picture.leastAlpha, HEAPF32[command + 6]);
            const count = HEAP32[command + 7];
            gl.drawElements(gl.TRIANGLES, count, gl.UNSIGNED_SHORT, first * 2);
            first += count;
        }
    },

    makeTexture__deps: ["$picture"],
    makeTexture: function () {
        return picture.textures.push(picture.gl.createTexture()) - 1;
    },

    deleteTexture__deps: ["$picture"],
    deleteTexture: function (name) {
        if (name === 0) return;
        picture.gl.deleteTexture(picture.textures[name] || null);
        picture.textures[name] = null;
    },

    fillTexture__deps: ["$picture"],
    fillTexture: function (name, width, height, pixels) {
        const gl = picture.gl;
        picture.bind(name);
        const bytes = pixels ? HEAPU8.subarray(pixels, pixels + width * height * 4) : null;
        gl.texImage2D(gl.TEXTURE_2D, 0, gl.RGBA, width, height, 0, gl.RGBA, gl.UNSIGNED_BYTE, bytes);
    },

    setTextureParameter__deps: ["$picture"],
    setTextureParameter: function (name, parameter, value) {
        picture.bind(name);
        picture.gl.texParameteri(picture.gl.TEXTURE_2D, parameter, value);
    },

    setViewport__deps: ["$picture"],
    setViewport: function (x, y, width, height) {
        picture.gl.viewport(x, y, width, height);
    },

    setClearColour__deps: ["$picture"],
    setClearColour: function (r, g, b, a) {
        picture.gl.clearColor(r, g, b, a);
    },

    clearPicture__deps: ["$picture"],
    clearPicture: function () {
        picture.gl.clear(picture.gl.COLOR_BUFFER_BIT);
    },

    readPicture__deps: ["$picture"],
    readPicture: function (x, y, width, height, pixels) {
        const gl = picture.gl;
        gl.readPixels(x, y, width, height, gl.RGBA, gl.UNSIGNED_BYTE,
                      HEAPU8.subarray(pixels, pixels + width * height * 4));
    },

    takeGraphicsError__deps: ["$picture"],
    takeGraphicsError: function () {
        return picture.gl.getError();
    },
});
