# SPDX-License-Identifier: Zlib
"""Headless browsers for tests, each with a profile of its own, and a server of files on loopback."""

import asyncio
import base64
import functools
import http.server
import json
import pathlib
import re
import subprocess
import tempfile
import threading

import websockets


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *arguments):
        pass


def serve(folder):
    """Serves the folder from now on; its address."""
    handler = functools.partial(QuietHandler, directory=str(folder))
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"http://127.0.0.1:{server.server_port}/"


class Browser:
    """A browser process and the connection to it. Use with `async with`."""

    async def __aenter__(self):
        self.folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.log = open(pathlib.Path(self.folder.name) / "log", "w+", encoding="utf-8")
        self.process = subprocess.Popen(self.command(self.folder.name), stdout=self.log,
                                        stderr=subprocess.STDOUT)
        self.number = 0
        self.answers = {}
        self.complaints = []  # exceptions and errors in the console
        self.hosts = set()  # that were asked for something
        self.socket = await websockets.connect(await self.address(), max_size=None)
        self.reader = asyncio.ensure_future(self.read())
        await self.begin()
        return self

    async def __aexit__(self, *error):
        self.reader.cancel()
        await self.socket.close()
        self.process.terminate()
        self.process.wait()
        self.folder.cleanup()

    async def address(self):
        """The address that the browser prints."""
        for _ in range(600):
            self.log.seek(0)
            found = re.search(r"listening on (ws://\S+)", self.log.read())
            if found:
                return found[1] + self.path
            await asyncio.sleep(0.1)
        raise RuntimeError("the browser does not start")

    async def read(self):
        async for text in self.socket:
            message = json.loads(text)
            if "id" in message:
                self.answers.pop(message["id"]).set_result(message)
            else:
                self.hear(message.get("method"), message.get("params", {}))

    async def call(self, method, **parameters):
        self.number += 1
        answer = self.answers[self.number] = asyncio.get_running_loop().create_future()
        await self.socket.send(json.dumps(
            {"id": self.number, "method": method, "params": parameters, **self.session}))
        answer = await asyncio.wait_for(answer, 1200)
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer}")
        return answer["result"]

    async def until(self, expression, seconds=60):
        """Waits until the expression is true in the page; its value."""
        for _ in range(int(seconds * 20)):
            value = await self.evaluate(expression)
            if value:
                return value
            await asyncio.sleep(0.05)
        raise AssertionError(f"not within {seconds} s: {expression}\n{self.complaints}")


class Chromium(Browser):
    path = ""
    session = {}
    touched = False

    def command(self, folder):
        return ["chromium", "--headless=new", "--no-sandbox", "--remote-debugging-port=0",
                f"--user-data-dir={folder}", "--use-gl=angle", "--use-angle=swiftshader",
                "--enable-unsafe-swiftshader", "--no-first-run", "--disable-background-networking",
                "--disable-component-update", "about:blank"]

    async def begin(self):
        target = await self.call("Target.createTarget", url="about:blank")
        attached = await self.call("Target.attachToTarget", targetId=target["targetId"],
                                   flatten=True)
        self.session = {"sessionId": attached["sessionId"]}
        for domain in ("Page", "Runtime", "Log", "Network"):
            await self.call(domain + ".enable")

    def hear(self, method, parameters):
        if method == "Network.requestWillBeSent":
            host = re.match("https?://[^/]*/", parameters["request"]["url"])
            self.hosts.update([host[0]] if host else [])
        elif method == "Runtime.exceptionThrown":
            details = parameters["exceptionDetails"]
            self.complaints.append(details.get("exception", {}).get("description", str(details)))
        elif method == "Runtime.consoleAPICalled" and parameters["type"] in ("error", "assert"):
            self.complaints.append(str(parameters["args"]))
        elif method == "Log.entryAdded" and parameters["entry"]["level"] == "error":
            self.complaints.append(parameters["entry"]["text"])

    async def open(self, address):
        await self.call("Page.navigate", url="about:blank")
        await self.call("Page.navigate", url=address)
        await self.until("document.readyState === 'complete' && location.href !== 'about:blank'")

    async def evaluate(self, expression):
        answer = await self.call("Runtime.evaluate", expression=expression, awaitPromise=True,
                                 returnByValue=True, userGesture=True)
        if "exceptionDetails" in answer:
            raise AssertionError(f"{expression[:200]}: {answer['exceptionDetails']}")
        return answer["result"].get("value")

    async def size(self, width, height, scale=1, touch=False):
        await self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                        deviceScaleFactor=scale, mobile=touch)
        await self.call("Emulation.setTouchEmulationEnabled", enabled=touch)

    async def key(self, key, down=True, up=True):
        code = {" ": "Space"}.get(key, key if len(key) > 1 else "Key" + key.upper())
        number = {" ": 32, "Escape": 27, "ArrowRight": 39, "ArrowLeft": 37}.get(key, ord(key[0]))
        for kind in ["rawKeyDown"] * down + ["keyUp"] * up:
            await self.call("Input.dispatchKeyEvent", type=kind, key=key, code=code,
                            windowsVirtualKeyCode=number)

    async def click(self, x, y):
        for kind in ("mousePressed", "mouseReleased"):
            await self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left",
                            clickCount=1)

    async def finger(self, *places):
        """Puts a finger down, moves it, or lifts it: nowhere."""
        kind = "touchMove" if self.touched and places else "touchStart" if places else "touchEnd"
        self.touched = bool(places)
        await self.call("Input.dispatchTouchEvent", type=kind,
                        touchPoints=[{"x": x, "y": y} for x, y in places])

    async def picture(self, path):
        shot = await self.call("Page.captureScreenshot")
        pathlib.Path(path).write_bytes(base64.b64decode(shot["data"]))


class Firefox(Browser):
    path = "/session"
    session = {}

    def command(self, folder):
        settings = pathlib.Path(folder) / "user.js"
        settings.write_text('user_pref("webgl.force-enabled", true);\n', encoding="utf-8")
        return ["firefox-esr", "--headless", "--no-remote", "--profile", folder,
                "--remote-debugging-port", "0"]

    async def begin(self):
        await self.call("session.new", capabilities={})
        tree = await self.call("browsingContext.getTree")
        self.context = tree["contexts"][0]["context"]
        await self.call("session.subscribe", events=["log.entryAdded"])

    def hear(self, method, parameters):
        if method == "log.entryAdded" and parameters["level"] == "error":
            self.complaints.append(parameters["text"])

    async def open(self, address):
        await self.call("browsingContext.navigate", context=self.context, url=address,
                        wait="complete")

    async def evaluate(self, expression):
        answer = await self.call("script.evaluate", expression=f"Promise.resolve({expression})"
                                 ".then(JSON.stringify)", target={"context": self.context},
                                 awaitPromise=True, userActivation=True)
        if answer["type"] != "success":
            raise AssertionError(f"{expression[:200]}: {answer['exceptionDetails']['text']}")
        return json.loads(answer["result"].get("value") or "null")
