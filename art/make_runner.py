#!/usr/bin/python3
# SPDX-License-Identifier: Zlib
"""Makes the runner's pictures, images/sprites/runner-*.png: 32 by 32 pixels, facing right.

Each pose is joint angles. Limbs with round caps are drawn 16 times enlarged, layer by layer,
reduced to crisp pixels, lined, and corrected by the text grids of runner.txt. Run it with no
arguments."""

import math

import numpy as np
from PIL import Image, ImageDraw

from pictures import artFolder, savePng, spritesFolder

size = 32  # pixels
scale = 16  # drawn this many times larger

black = (6, 4, 12, 255)  # the figure
farInk = (27, 22, 44, 255)  # far arm and leg, a breath lighter
crease = (74, 66, 116, 255)  # the line that parts black from black
rim = (206, 246, 255, 255)  # light along head and back
fill = (162, 194, 226, 255)  # weaker light on all other sides, enough for the darkest rock
eyeLight = (255, 255, 255, 255)
scarfLight = (168, 250, 255, 255)
scarfMain = (60, 230, 252, 255)
scarfShade = (48, 190, 238, 255)  # the underside

signs = {"#": black, "f": farInk, "l": crease, "r": rim, "b": fill, "e": eyeLight,
         "c": scarfLight, "C": scarfMain, "s": scarfShade, "x": (0, 0, 0, 0)}

# Lengths and widths in pixels.
thigh, shin, foot = 6.2, 6.4, 3.1
upperArm, foreArm = 4.8, 4.4
torso = 7.4
headRise = 4.4  # from the neck to the middle of the head
headMark = (7, 5)  # the pixel of a head grid that lies there
thighWidth, shinWidth, armWidth = 3.9, 3.1, 2.7

# Angles in degrees: 0 hangs straight down, positive swings forward (to the right). A knee bends
# the shin back, an elbow the forearm forward. `lean` tips the trunk forward.
fields = ("lean", "nearHip", "nearKnee", "farHip", "farKnee",
          "nearArm", "nearElbow", "farArm", "farElbow")

# One step of the run, from the contact of one foot to just before that of the other; the second
# step swaps the legs and the arms. A leg is hip, knee and, if the foot is to lie flat, toe; an arm
# is shoulder and elbow.
runStep = [
    # contact: the front foot strikes, the rear leg is stretched behind
    dict(lean=20, front=(41, 17), rear=(-36, 42), frontArm=(52, 84), rearArm=(-78, 78)),
    # down and passing: the weight on one bent leg, the other knee swings through
    dict(lean=23, front=(30, 64, 34), rear=(-2, 112), frontArm=(16, 92), rearArm=(-26, 84)),
    # up: the toe pushes off far behind, the free knee drives high
    dict(lean=19, front=(-26, 10), rear=(60, 98), frontArm=(-50, 76), rearArm=(36, 92)),
]


class Pose:
    """The joints of one picture. `scarf` lists (x, y) steps of the scarf's tail from the neck."""

    def __init__(self, angles, scarf, headX=18.5, hipY=None, glance=0, breath=0.0,
                 head="level"):
        self.angles = angles
        self.scarf = scarf
        self.headX = headX  # the head keeps its column through a cycle
        self.hipY = hipY  # None: the lower foot stands on the ground row
        self.glance = glance  # how far the eye looks back, in pixels
        self.breath = breath  # how far the chest sinks, in pixels
        self.head = head  # its name in runner.txt


def swing(origin, length, degrees):
    """The far end of a limb of `length` from `origin`."""
    angle = math.radians(degrees)
    return (origin[0] + length * math.sin(angle), origin[1] + length * math.cos(angle))


def leg(hip, hipAngle, knee, toe=0):
    """Hip, knee, ankle and toe of a leg."""
    kneeAt = swing(hip, thigh, hipAngle)
    ankle = swing(kneeAt, shin, hipAngle - knee)
    toeAt = swing(ankle, foot, hipAngle - knee + 82 + toe)
    return [hip, kneeAt, ankle, toeAt]


def arm(shoulder, armAngle, elbow):
    elbowAt = swing(shoulder, upperArm, armAngle)
    return [shoulder, elbowAt, swing(elbowAt, foreArm, armAngle + elbow)]


class Layer:
    """One layer of the figure, drawn large and reduced to a mask of whole pixels."""

    def __init__(self):
        self.large = Image.new("L", (size * scale, size * scale), 0)
        self.pen = ImageDraw.Draw(self.large)

    def limb(self, start, end, startWidth, endWidth):
        steps = 48
        for i in range(steps + 1):
            t = i / steps
            self.dot((start[0] + (end[0] - start[0]) * t, start[1] + (end[1] - start[1]) * t),
                     (startWidth + (endWidth - startWidth) * t) / 2)

    def dot(self, at, radius):
        x, y = at
        self.pen.ellipse([(x - radius) * scale, (y - radius) * scale,
                          (x + radius) * scale, (y + radius) * scale], fill=255)

    def mask(self):
        return np.asarray(self.large.reduce(scale)) >= 118


def legLayer(joints):
    layer = Layer()
    hip, knee, ankle, toe = joints
    layer.limb(hip, knee, thighWidth + 0.5, shinWidth + 0.3)
    layer.limb(knee, ankle, shinWidth + 0.2, shinWidth - 0.4)
    layer.limb(ankle, toe, 2.7, 2.1)
    return layer.mask()


def armLayer(joints):
    layer = Layer()
    shoulder, elbow, hand = joints
    layer.limb(shoulder, elbow, armWidth, armWidth - 0.2)
    layer.limb(elbow, hand, armWidth - 0.2, armWidth - 0.2)
    layer.dot(hand, 1.55)
    return layer.mask()


def shifted(mask, dx, dy):
    """The mask moved by whole pixels, what leaves the picture is lost."""
    moved = np.zeros_like(mask)
    ys, xs = np.nonzero(mask)
    ys, xs = ys + dy, xs + dx
    inside = (ys >= 0) & (ys < size) & (xs >= 0) & (xs < size)
    moved[ys[inside], xs[inside]] = True
    return moved


def lowest(joints):
    """How far below the hip a leg's sole reaches."""
    hip, _, ankle, toe = joints
    return max(ankle[1] + 1.35, toe[1] + 1.05) - hip[1]


def eyeRow(rows):
    """The number of the row of a head grid that holds the eye."""
    return next(y for y, row in enumerate(rows) if "e" in row)


def draw(name, pose, heads, fixes):
    a = pose.angles
    nearLegAt = lambda hip: leg(hip, a["nearHip"], a["nearKnee"], a.get("nearToe", 0))
    farLegAt = lambda hip: leg(hip, a["farHip"], a["farKnee"], a.get("farToe", 0))
    lean = a["lean"]
    headOffset = (torso * math.sin(math.radians(lean))
                  + (headRise) * math.sin(math.radians(lean * 0.75)) + 0.5)
    hip = (pose.headX - headOffset, 0.0)
    bottom = max(lowest(nearLegAt(hip)), lowest(farLegAt(hip)))
    hip = (hip[0], size - bottom if pose.hipY is None else pose.hipY)
    chest = torso - pose.breath
    neck = swing(hip, chest, 180 - lean)
    shoulder = swing(hip, chest - 1.3, 180 - lean)
    head = swing(neck, headRise, 180 - lean * 0.75)
    head = (head[0] + 0.5, head[1])

    farLeg, nearLeg = legLayer(farLegAt(hip)), legLayer(nearLegAt(hip))
    farArm = armLayer(arm((shoulder[0] + 0.8, shoulder[1]), a["farArm"], a["farElbow"]))
    nearArm = armLayer(arm((shoulder[0] - 0.6, shoulder[1]), a["nearArm"], a["nearElbow"]))

    trunk = Layer()
    waist = swing(hip, 3, 180 - lean)
    trunk.limb(hip, waist, 4.4, 4.4)
    trunk.limb(waist, shoulder, 4.4, 5.5)
    trunkMask = trunk.mask()

    headLeft, headTop = round(head[0]) - headMark[0], round(head[1]) - headMark[1]
    headMask = np.zeros((size, size), dtype=bool)
    eye = []
    for y, row in enumerate(heads[pose.head]):
        for x, sign in enumerate(row):
            if sign != ".":
                headMask[headTop + y, headLeft + x] = True
            if sign == "e":
                eye.append((headLeft + x - pose.glance, headTop + y))

    # The scarf: a band around the neck and a tail that flies behind.
    band = Layer()
    band.limb((neck[0] - 2.2, neck[1] - 0.2), (neck[0] + 2.2, neck[1] + 0.6), 1.9, 1.9)
    tail = Layer()
    points = [(neck[0] - 1.6, neck[1] - 0.2)]
    for step in pose.scarf:
        points.append((points[-1][0] + step[0], points[-1][1] + step[1]))
    for i in range(len(points) - 1):
        width = 1.7 + 0.8 * i / max(1, len(points) - 2)
        tail.limb(points[i], points[i + 1], width, width + 0.3)
    bandMask, tailMask = band.mask(), tail.mask()

    figure = np.zeros((size, size, 4), dtype=np.uint8)
    figure[farArm | farLeg] = farInk
    solid = trunkMask | headMask | nearLeg
    # A line of the far ink keeps the near arm apart from the trunk.
    around = np.zeros_like(nearArm)
    for dx, dy in ((1, 0), (0, 1), (0, -1), (-1, 0)):
        around |= shifted(nearArm, dx, dy)
    figure[solid] = black
    # Ink around the scarf, then the scarf.
    scarf = tailMask | bandMask
    inkLine = np.zeros_like(scarf)
    for dx, dy in ((1, 0), (0, 1), (0, -1), (-1, 0)):
        inkLine |= shifted(tailMask, dx, dy)
    figure[inkLine & ~scarf & (figure[..., 3] == 0)] = black
    figure[tailMask & ~solid] = scarfMain
    top = tailMask & ~shifted(tailMask, 0, 1)
    bottom = tailMask & ~shifted(tailMask, 0, -1)
    figure[top & ~solid] = scarfLight
    figure[bottom & ~top & ~solid] = scarfShade
    figure[bandMask] = scarfMain
    figure[around & trunkMask & ~bandMask & ~nearArm] = crease
    figure[nearArm] = black

    # The rim: one pixel of light outside the figure, on the sides that the sky lights: above and
    # behind. A single pixel of it would be dirt.
    lit = headMask | trunkMask | nearArm | nearLeg | farLeg | farArm
    empty = figure[..., 3] == 0
    brow = headMask.copy()  # the face is lit in front as far as the eye
    brow[headTop + eyeRow(heads[pose.head]) + 1:] = False
    edge = (shifted(lit, 0, -1) | shifted(lit, -1, 0) | shifted(brow, 1, 0)) & empty
    company = np.zeros_like(edge)
    for dx in (-1, 0, 1):
        for dy in (-1, 0, 1):
            if dx or dy:
                company |= shifted(edge, dx, dy)
    # The sides away from the sky are lit too, or dark rock would swallow them.
    around = np.zeros_like(edge)
    for dx, dy in ((1, 0), (0, 1), (0, -1), (-1, 0)):
        around |= shifted(lit, dx, dy)
    light = around & empty
    # Light in a slit between limbs would be dirt too.
    filled = (figure[..., 3] > 0) & ~light
    walls = sum(shifted(filled, dx, dy).astype(int)
                for dx, dy in ((1, 0), (0, 1), (0, -1), (-1, 0)))
    figure[light] = fill
    figure[edge & company] = rim
    figure[light & (walls >= 3)] = black
    # Ink parts the scarf and the creases from the light.
    bright = light & (walls < 3) | (figure[..., 3] == 0)
    inner = np.zeros_like(edge)
    for dx, dy in ((1, 0), (0, 1), (0, -1), (-1, 0)):
        inner |= shifted(bright, dx, dy)
    figure[inner & (bandMask | (figure[..., :3] == crease[:3]).all(axis=2))] = black

    for x, y in eye:
        figure[y, x] = eyeLight
    for fix in fixes.get(name, []):
        left, top, rows = fix
        for y, row in enumerate(rows):
            for x, sign in enumerate(row):
                if sign != ".":
                    figure[top + y, left + x] = signs[sign]
    return figure


def runPoses():
    poses = []
    for index in range(6):
        step = runStep[index % 3]
        near, far = ("front", "rear") if index < 3 else ("rear", "front")
        nearArm, farArm = ("rearArm", "frontArm") if index < 3 else ("frontArm", "rearArm")
        angles = {"lean": step["lean"],
                  "nearHip": step[near][0], "nearKnee": step[near][1],
                  "farHip": step[far][0], "farKnee": step[far][1],
                  "nearArm": step[nearArm][0], "nearElbow": step[nearArm][1],
                  "farArm": step[farArm][0], "farElbow": step[farArm][1]}
        angles["nearToe"], angles["farToe"] = (sum(step[leg][2:]) for leg in (near, far))
        wave = 2 * math.pi * index / 6
        scarf = [(-2.2, -0.3 + 1.3 * math.sin(wave - k * 1.3)) for k in range(4)]
        poses.append(Pose(angles, scarf, headX=19.0))
    return poses


def figure(lean, nearHip, nearKnee, farHip, farKnee, nearArm, nearElbow, farArm, farElbow, scarf,
         toes=(0, 0), **more):
    angles = dict(zip(fields, (lean, nearHip, nearKnee, farHip, farKnee, nearArm, nearElbow, farArm,
                               farElbow)))
    angles["nearToe"], angles["farToe"] = toes
    return Pose(angles, scarf, **more)


def allPoses():
    """Every picture's name and pose."""
    poses = {f"run-{i + 1}": p for i, p in enumerate(runPoses())}
    # The three in the air play 1, 2, 3, 2 while the runner flies, so the second lies half-way.
    poses["air-1"] = figure(14, -22, 26, 66, 104, 68, 54, -52, 40,
                            [(-1.7, 1.5), (-1.5, 1.9), (-0.9, 1.9), (-1.3, 1.5)],
                            toes=(-40, -10), hipY=17.8, head="rise")
    poses["air-2"] = figure(16, 14, 98, 52, 88, 58, 66, -72, 24,
                            [(-2.1, 0.4), (-2.0, -1.2), (-1.9, 0.4), (-1.6, 1.2)],
                            toes=(-30, -20), hipY=18.0)
    poses["air-3"] = figure(14, 46, 30, -26, 50, 62, 50, -112, 22,
                            [(-1.8, -1.2), (-1.6, -1.6), (-1.9, -1.0), (-1.5, -1.4)],
                            toes=(-14, -40), hipY=17.8, head="fall")
    # Standing plays 1, 2, 3, 2, a quarter of a second in all: small moves only.
    poses["stand-1"] = figure(5, 20, 9, -19, 0, -24, 40, 8, 22,
                              [(-2.0, 0.4), (-1.7, 1.4), (-1.8, 0.2)], toes=(0, 24), headX=17.0,
                              head="still")
    poses["stand-2"] = figure(6, 20, 9, -19, 0, -27, 46, 10, 27,
                              [(-2.0, 0.1), (-1.8, 0.8), (-1.7, 1.2)], toes=(0, 24), headX=17.0,
                              head="still", glance=1, breath=0.5)
    poses["stand-3"] = figure(7, 20, 9, -19, 0, -30, 52, 12, 32,
                              [(-2.0, 0.0), (-1.9, -0.2), (-1.6, 1.5)], toes=(0, 24), headX=17.0,
                              head="still", glance=3, breath=1.0)
    poses["pose"] = figure(-2, 24, 2, -22, 0, -58, 104, 54, -96,
                           [(-2.1, -1.1), (-1.9, 0.5), (-1.9, -1.2), (-1.6, 0.6)],
                           toes=(-8, 24), headX=16.5)
    return poses


def readGrids(path):
    """The heads by name, and the fixes by picture: lists of (left, top, rows)."""
    heads, fixes = {}, {}
    rows = None
    for line in path.read_text().splitlines():
        words = line.split()
        if not words or line.startswith("# "):
            continue
        if words[0] == "head":
            rows = heads[words[1]] = []
        elif words[0] == "fix":
            rows = []
            fixes.setdefault(words[1], []).append((int(words[2]), int(words[3]), rows))
        else:
            rows.append(words[0])
    return heads, fixes


def main():
    heads, fixes = readGrids(artFolder / "runner.txt")
    for name, pose in allPoses().items():
        picture = Image.fromarray(draw(name, pose, heads, fixes), "RGBA")
        savePng(picture, spritesFolder / f"runner-{name}.png")


if __name__ == "__main__":
    main()
