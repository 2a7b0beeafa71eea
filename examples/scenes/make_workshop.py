#!/usr/bin/env python3
"""Writes the bundled scene, workshop.gltf and workshop.bin: a market street with workshops, a crane and a windmill.

    make_workshop.py            writes both files next to this script
    make_workshop.py --check    compares them with what would be written and changes nothing

The scene is made the way scenes come from authoring programs: many small nodes, deep in places, shared meshes, names
that repeat, mirrored groups. Units are metres, y is up, the street runs along z. The same bytes come out on every
platform: numbers are rounded before they are written.

The script and the scene are part of this project, under its licence: MIT, (c) 2026 the SceneContainer authors.
"""
import json
import math
import struct
import sys
from pathlib import Path

FOLDER = Path(__file__).resolve().parent

# name: red, green, blue, alpha, roughness, emission
MATERIALS = {
    "Cream plaster": (0.87, 0.80, 0.65, 1.0, 0.9, 0.0),
    "Rose plaster": (0.80, 0.48, 0.40, 1.0, 0.9, 0.0),
    "Blue plaster": (0.42, 0.56, 0.68, 1.0, 0.9, 0.0),
    "Timber": (0.30, 0.18, 0.10, 1.0, 0.8, 0.0),
    "Oak": (0.58, 0.38, 0.20, 1.0, 0.7, 0.0),
    "Roof tile": (0.66, 0.25, 0.15, 1.0, 0.8, 0.0),
    "Stone": (0.55, 0.53, 0.50, 1.0, 0.9, 0.0),
    "Glass": (0.50, 0.70, 0.78, 0.6, 0.1, 0.0),
    "Grass": (0.33, 0.50, 0.20, 1.0, 1.0, 0.0),
    "Leaves": (0.20, 0.42, 0.14, 1.0, 1.0, 0.0),
    "Iron": (0.16, 0.17, 0.19, 1.0, 0.4, 0.0),
    "Red cloth": (0.75, 0.12, 0.12, 1.0, 0.9, 0.0),
    "Lamp light": (1.00, 0.85, 0.45, 1.0, 0.5, 1.0),
}
PLASTERS = ["Cream plaster", "Rose plaster", "Blue plaster"]


# --- Shapes: lists of corners (position, normal, uv) in triangles, all standing on y = 0 around the y axis ------------

def polygon(*points, uvs=((0, 1), (1, 1), (1, 0), (0, 0))):
    """A flat convex polygon, counter-clockwise from outside, as a fan of triangles."""
    a, b, c = points[:3]
    u, v = [q - p for p, q in zip(a, b)], [q - p for p, q in zip(a, c)]
    normal = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
    length = math.sqrt(sum(n * n for n in normal))
    corners = [(p, tuple(n / length for n in normal), uv) for p, uv in zip(points, uvs)]
    return [corners[i] for k in range(2, len(points)) for i in (0, k - 1, k)]


def grid(columns, rows, corner):
    """A curved patch: corner(s, t) yields (position, normal) for s, t in 0..1."""
    def at(i, j):
        position, normal = corner(i / columns, j / rows)
        return position, normal, (i / columns, 1 - j / rows)

    triangles = []
    for j in range(rows):
        for i in range(columns):
            a, b, c, d = at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)
            triangles += [a, b, c] if a[0] != b[0] else []
            triangles += [a, c, d] if c[0] != d[0] else []
    return triangles


def on_circle(s, radius=1.0):
    """x and z of a point that runs from +x towards -z."""
    # Rounded so that the last point of a circle is the first one again.
    return round(radius * math.cos(2 * math.pi * s), 9), round(-radius * math.sin(2 * math.pi * s), 9)


def box():
    """The unit cube."""
    x, y, z = 0.5, 1.0, 0.5
    return (polygon((-x, 0, z), (x, 0, z), (x, y, z), (-x, y, z))
            + polygon((x, 0, -z), (-x, 0, -z), (-x, y, -z), (x, y, -z))
            + polygon((x, 0, z), (x, 0, -z), (x, y, -z), (x, y, z))
            + polygon((-x, 0, -z), (-x, 0, z), (-x, y, z), (-x, y, -z))
            + polygon((-x, y, z), (x, y, z), (x, y, -z), (-x, y, -z))
            + polygon((-x, 0, -z), (x, 0, -z), (x, 0, z), (-x, 0, z)))


def gable():
    """A prism with a triangle in front: as wide, high and deep as the unit cube."""
    x, z, top = 0.5, 0.5, ((0, 1, 0.5), (0, 1, -0.5))
    front = ((0, 1), (1, 1), (0.5, 0))
    return (polygon((-x, 0, z), (x, 0, z), top[0], uvs=front) + polygon((x, 0, -z), (-x, 0, -z), top[1], uvs=front)
            + polygon((x, 0, z), (x, 0, -z), top[1], top[0]) + polygon((-x, 0, -z), (-x, 0, z), top[0], top[1])
            + polygon((-x, 0, -z), (x, 0, -z), (x, 0, z), (-x, 0, z)))


def turned(bottom, top, sides=12):
    """A cylinder or cone of height 1 with the given radii and flat ends."""
    def wall(s, t):
        radius, (x, z) = bottom + (top - bottom) * t, on_circle(s)
        length = math.hypot(1, bottom - top)
        return (x * radius, t, z * radius), (x / length, (bottom - top) / length, z / length)

    triangles = grid(sides, 1, wall)
    for height, radius, order in ((0, bottom, -1), (1, top, 1)):
        rim = [on_circle(k / sides, radius) for k in range(sides)][::order]
        if radius > 0:
            triangles += polygon(*[(x, height, z) for x, z in rim],
                                 uvs=[(0.5 + x / radius / 2, 0.5 + z / radius / 2) for x, z in rim])
    return triangles


def ball(sides=12, rows=8):
    """A sphere of diameter 1."""
    def skin(s, t):
        angle = math.pi * (t - 0.5)
        x, z = on_circle(s, round(math.cos(angle), 9))
        normal = (x, math.sin(angle), z)
        return (x / 2, 0.5 + normal[1] / 2, z / 2), normal

    return grid(sides, rows, skin)


def ring(thickness=0.09, sides=20, rows=6):
    """A torus of radius 1 that lies flat around the origin."""
    def skin(s, t):
        (x, z), angle = on_circle(s), 2 * math.pi * t
        out, up = round(math.cos(angle), 9), round(math.sin(angle), 9)
        radius = 1 + thickness * out
        return (x * radius, thickness * up, z * radius), (x * out, up, z * out)

    return grid(sides, rows, skin)


SHAPES = {"Box": box(), "Gable": gable(), "Cylinder": turned(0.5, 0.5), "Cone": turned(0.5, 0.0), "Ball": ball(),
          "Tower": turned(0.5, 0.34, 16), "Ring": ring()}


# --- The file ---------------------------------------------------------------------------------------------------------

def about(axis, degrees):
    """The rotation about one axis, as a quaternion."""
    half = math.radians(degrees) / 2
    return [round(math.sin(half), 7) if axis == name else 0 for name in "xyz"] + [round(math.cos(half), 7)]


def plain(values, digits=4):
    """Rounded numbers, whole ones written as such."""
    return [int(v) if v == int(v) else v for v in (round(float(value), digits) + 0.0 for value in values)]


class Gltf:
    """Collects nodes and meshes and writes them down."""

    def __init__(self):
        self.nodes, self.meshes, self.mesh_index = [], [], {}
        self.accessors, self.views, self.bytes = [], [], bytearray()
        self.shape_accessors = {}

    def node(self, parent, name, at=(0, 0, 0), turn=None, scale=None, **rest):
        """Adds a node below parent (None: the root); turn is (axis, degrees)."""
        node = {"name": name}
        if any(at):
            node["translation"] = plain(at)
        if turn and turn[1]:
            node["rotation"] = plain(about(*turn), 7)
        if scale:
            node["scale"] = plain(scale)
        node.update(rest)
        self.nodes.append(node)
        index = len(self.nodes) - 1
        if parent is not None:
            self.nodes[parent].setdefault("children", []).append(index)
        return index

    def part(self, parent, name, shape, material, size, at=(0, 0, 0), turn=None):
        """Adds a node that shows a shape at the given size."""
        return self.node(parent, name, at, turn, size, mesh=self.mesh(shape, material))

    def mesh(self, shape, material):
        """The one mesh of this shape and material."""
        key = (shape, material)
        if key not in self.mesh_index:
            self.mesh_index[key] = len(self.meshes)
            self.meshes.append({"name": f"{shape} of {material.lower()}", "primitives": [
                {**self.shape(shape), "material": list(MATERIALS).index(material)}]})
        return self.mesh_index[key]

    def shape(self, name):
        """The accessors of a shape's arrays; equal corners are written once."""
        if name not in self.shape_accessors:
            corners = [tuple(round(x, 6) + 0.0 for part in corner for x in part) for corner in SHAPES[name]]
            unique = {corner: index for index, corner in enumerate(dict.fromkeys(corners))}
            self.shape_accessors[name] = {
                "attributes": {"POSITION": self.accessor([c[0:3] for c in unique], "VEC3", 34962, bounds=True),
                               "NORMAL": self.accessor([c[3:6] for c in unique], "VEC3", 34962),
                               "TEXCOORD_0": self.accessor([c[6:8] for c in unique], "VEC2", 34962)},
                "indices": self.accessor([(unique[c],) for c in corners], "SCALAR", 34963, code="H")}
        return self.shape_accessors[name]

    def accessor(self, rows, kind, target=None, code="f", bounds=False):
        """Appends an array of its own view, which starts at a multiple of 4 bytes."""
        self.bytes += bytes(-len(self.bytes) % 4)
        data = b"".join(struct.pack(f"<{len(row)}{code}", *row) for row in rows)
        view = {"buffer": 0, "byteOffset": len(self.bytes), "byteLength": len(data)}
        self.views.append({**view, "target": target} if target else view)
        self.bytes += data
        accessor = {"bufferView": len(self.views) - 1, "componentType": {"f": 5126, "H": 5123}[code],
                    "count": len(rows), "type": kind}
        if bounds:
            accessor["min"] = [min(column) for column in zip(*rows)]
            accessor["max"] = [max(column) for column in zip(*rows)]
        self.accessors.append(accessor)
        return len(self.accessors) - 1

    def turning(self, node, seconds):
        """An animation that turns a node once about z."""
        times = self.accessor([(seconds * k / 4,) for k in range(5)], "SCALAR", bounds=True)
        turns = self.accessor([about("z", 90 * k) for k in range(5)], "VEC4")
        return {"name": "Sails turn", "samplers": [{"input": times, "output": turns, "interpolation": "LINEAR"}],
                "channels": [{"sampler": 0, "target": {"node": node, "path": "rotation"}}]}

    def text(self, animation, lights, cameras):
        """The .gltf file, one element of an array a line."""
        document = {
            "asset": {"version": "2.0", "generator": "make_workshop.py",
                      "copyright": "2026 the SceneContainer authors, MIT licence"},
            "extensionsUsed": ["KHR_lights_punctual"], "extensions": {"KHR_lights_punctual": {"lights": lights}},
            "scene": 0, "scenes": [{"name": "Workshop street", "nodes": [0]}],
            "nodes": self.nodes, "meshes": self.meshes, "materials": [material(name) for name in MATERIALS],
            "cameras": cameras, "animations": [animation], "accessors": self.accessors, "bufferViews": self.views,
            "buffers": [{"uri": "workshop.bin", "byteLength": len(self.bytes)}]}
        return "{\n" + ",\n".join(f'"{key}": {lines(value)}' for key, value in document.items()) + "\n}\n"


def lines(value):
    """A list of objects as one object a line, everything else on one line."""
    compact = {"separators": (",", ":")}
    if isinstance(value, list) and value and isinstance(value[0], dict):
        return "[\n" + ",\n".join(json.dumps(entry, **compact) for entry in value) + "\n]"
    return json.dumps(value, **compact)


def material(name):
    """The glTF material of a row of the table."""
    red, green, blue, alpha, roughness, emission = MATERIALS[name]
    result = {"name": name, "pbrMetallicRoughness": {"baseColorFactor": [red, green, blue, alpha], "metallicFactor": 0,
                                                     "roughnessFactor": roughness}}
    if alpha < 1:
        result["alphaMode"] = "BLEND"
    if emission:
        result["emissiveFactor"] = [red * emission, green * emission, blue * emission]
    return result


# --- The things in the street -----------------------------------------------------------------------------------------

def window(g, parent, at, turn=None):
    """A window 0.9 wide; the right shutter is the left one, mirrored."""
    group = g.node(parent, "Window", at, turn)
    g.part(group, "Frame", "Box", "Timber", (1.0, 1.3, 0.12))
    g.part(group, "Pane", "Box", "Glass", (0.8, 1.1, 0.14), (0, 0.1, 0.01))
    g.part(group, "Bar", "Box", "Timber", (0.06, 1.1, 0.16), (0, 0.1, 0.01))
    g.part(group, "Sill", "Box", "Stone", (1.2, 0.1, 0.3), (0, -0.1, 0.05))
    for mirror in (1, -1):
        shutter = g.node(group, "Shutter", scale=None if mirror == 1 else (-1, 1, 1))
        g.part(shutter, "Panel", "Box", "Oak", (0.45, 1.3, 0.06), (-0.76, 0, 0.06), ("y", 12))
    return group


def door(g, parent, at):
    """A door with its step and a lamp above it."""
    group = g.node(parent, "Door", at)
    g.part(group, "Frame", "Box", "Timber", (1.3, 2.2, 0.16))
    leaf = g.node(group, "Leaf", (-0.5, 0, 0.08), ("y", -14))
    g.part(leaf, "Panel", "Box", "Oak", (1.0, 2.05, 0.1), (0.5, 0, 0))
    g.part(leaf, "Knob", "Ball", "Iron", (0.12, 0.12, 0.12), (0.88, 0.95, 0.09))
    g.part(group, "Step", "Box", "Stone", (1.6, 0.2, 0.7), (0, -0.2, 0.35))
    return group


def storey(g, parent, name, at, size, wall, windows):
    """Four walls with a timber frame; windows lists the x positions of those in front."""
    width, height, depth = size
    group = g.node(parent, name, at)
    g.part(group, "Wall", "Box", wall, (width, height, depth))
    for x in (-1, 1):
        for z in (-1, 1):
            g.part(group, "Post", "Box", "Timber", (0.22, height, 0.22), (x * width / 2, 0, z * depth / 2))
    for y in (0, height - 0.2):
        g.part(group, "Beam", "Box", "Timber", (width + 0.2, 0.2, 0.12), (0, y, depth / 2))
    for x in windows:
        window(g, group, (x, 0.95, depth / 2 + 0.02))
    window(g, group, (width / 2, 0.95, 0), ("y", 90))
    return group


def roof(g, parent, at, width, depth, rise, wall):
    """A gable over the front with two slabs of tiles, and a chimney."""
    group = g.node(parent, "Roof", at)
    g.part(group, "Gable", "Gable", wall, (width, rise, depth))
    run = math.hypot(width / 2, rise)
    slope = math.degrees(math.atan2(rise, width / 2))
    for side in (-1, 1):
        slab = g.node(group, "Slab", (0, rise + 0.02, 0), ("z", -side * slope))
        g.part(slab, "Tiles", "Box", "Roof tile", (run + 0.6, 0.16, depth + 0.7), (side * (run + 0.5) / 2, 0, 0))
    g.part(group, "Ridge", "Box", "Timber", (0.25, 0.25, depth + 0.8), (0, rise + 0.05, 0))
    chimney = g.node(group, "Chimney", (width * 0.24, rise * 0.4, -depth * 0.2))
    g.part(chimney, "Stack", "Box", "Stone", (0.7, rise * 0.6 + 0.9, 0.7))
    g.part(chimney, "Pot", "Cylinder", "Roof tile", (0.36, 0.5, 0.36), (0, rise * 0.6 + 0.9, 0))
    return group


def house(g, parent, at, number):
    """A house that looks along +z; every storey is a child of the one below it."""
    width, depth = (6.4, 5.4, 7.2)[number % 3], (6.0, 7.0)[number % 2]
    wall = PLASTERS[number * 2 % 3]
    group = g.node(parent, "House", at)
    g.part(group, "Plinth", "Box", "Stone", (width + 0.3, 0.4, depth + 0.3))
    floor = storey(g, group, "Ground floor", (0, 0.4, 0), (width, 3.0, depth), "Stone" if number % 4 == 1 else wall,
                   (-width * 0.3, width * 0.3))
    door(g, floor, (0, 0, depth / 2 + 0.03))
    width, depth, base = width + 0.5, depth + 0.6, 3.0
    for level in range(1 + number % 2):
        floor = storey(g, floor, "Upper floor", (0, base, 0), (width, 2.7, depth), wall, (-width * 0.25, width * 0.25))
        base = 2.7
    roof(g, floor, (0, base, 0), width, depth, (3.4, 2.6, 3.9)[number % 3], wall)
    return group


def stall(g, parent, at, turn, number):
    """A market stall: posts, a counter, a striped awning, crates of fruit."""
    group = g.node(parent, "Stall", at, turn)
    for x in (-1.4, 1.4):
        for z, height in ((-0.9, 2.6), (0.9, 2.2)):
            g.part(group, "Post", "Cylinder", "Oak", (0.12, height, 0.12), (x, 0, z))
    g.part(group, "Counter", "Box", "Oak", (2.8, 0.9, 0.9), (0, 0, 0.4))
    awning = g.node(group, "Awning", (0, 2.4, 0), ("x", 14))
    for stripe in range(8):
        cloth = ("Red cloth", "Cream plaster", "Blue plaster", "Cream plaster")[stripe % 2 + number % 2 * 2]
        g.part(awning, "Strip", "Box", cloth, (0.4, 0.05, 2.5), (-1.4 + 0.4 * stripe, 0, 0.1))
    for x, fruit in ((-0.8, "Leaves"), (0.1, "Red cloth"), (0.9, "Lamp light" if number % 3 == 0 else "Roof tile")):
        crate = g.node(group, "Crate", (x, 0.9, 0.45), ("x", 10))
        g.part(crate, "Box", "Box", "Timber", (0.7, 0.15, 0.6))
        for k in range(3):
            fruit_at = (-0.2 + 0.2 * k, 0.12, 0.12 - 0.24 * (k % 2))
            g.part(crate, "Fruit", "Ball", fruit, (0.26, 0.24, 0.26), fruit_at)


def lamp(g, parent, at, turn, light=None):
    """A street lamp; the bulb hangs from an arm. light adds a node that shines, by the name given."""
    group = g.node(parent, "Lamp", at, turn)
    g.part(group, "Foot", "Cylinder", "Stone", (0.5, 0.3, 0.5))
    pole = g.node(group, "Pole", (0, 0.3, 0))
    g.part(pole, "Tube", "Cylinder", "Iron", (0.14, 3.6, 0.14))
    arm = g.node(pole, "Arm", (0, 3.4, 0))
    g.part(arm, "Tube", "Box", "Iron", (0.9, 0.08, 0.08), (0.4, 0, 0))
    lantern = g.node(arm, "Lantern", (0.8, -0.7, 0))
    g.part(lantern, "Glass", "Cylinder", "Glass", (0.42, 0.5, 0.42))
    g.part(lantern, "Bulb", "Ball", "Lamp light", (0.24, 0.3, 0.24), (0, 0.1, 0))
    g.part(lantern, "Hat", "Cone", "Iron", (0.6, 0.3, 0.6), (0, 0.5, 0))
    if light:
        g.node(lantern, light, (0, 0.25, 0), extensions={"KHR_lights_punctual": {"light": 1}})


def branch(g, parent, at, turn, length, depth):
    """A branch that forks until depth is used up and then carries leaves."""
    group = g.node(parent, "Branch", at, turn)
    g.part(group, "Wood", "Tower", "Timber", (length * 0.16, length, length * 0.16))
    tip = (0, length * 0.94, 0)
    if depth == 0:
        size = length * 1.9
        g.part(group, "Leaves", "Ball", "Leaves", (size, size * 0.85, size), (0, length * 0.3, 0))
        return
    fork = g.node(group, "Fork", tip, ("y", 70 * depth + 25 * length))
    branch(g, fork, (0, 0, 0), ("x", 36), length * 0.72, depth - 1)
    branch(g, fork, (0, 0, 0), ("x", -30), length * 0.78, depth - 1)


def fir(g, parent, at, size):
    """A conifer whose tiers stand on one another."""
    group = g.node(parent, "Fir", at, scale=(size, size, size))
    g.part(group, "Trunk", "Cylinder", "Timber", (0.4, 1.2, 0.4))
    tier, width = g.node(group, "Tier", (0, 0.9, 0)), 2.6
    for _ in range(4):
        g.part(tier, "Needles", "Cone", "Leaves", (width, 1.7, width))
        tier, width = g.node(tier, "Tier", (0, 0.95, 0), ("y", 15)), width * 0.76


def fence(g, parent, at, turn, posts, bend):
    """A fence that bends: every post stands in the frame of the one before it."""
    post = g.node(parent, "Fence", at, turn)
    for _ in range(posts):
        g.part(post, "Stake", "Box", "Oak", (0.16, 1.2, 0.16))
        for height in (0.45, 0.9):
            g.part(post, "Rail", "Box", "Oak", (1.5, 0.12, 0.06), (0.75, height, 0))
        post = g.node(post, "Post", (1.5, 0, 0), ("y", bend))
    g.part(post, "Stake", "Box", "Oak", (0.16, 1.2, 0.16))


def windmill(g, parent, at, turn):
    """A windmill. Returns the node that turns."""
    group = g.node(parent, "Windmill", at, turn)
    g.part(group, "Base", "Cylinder", "Stone", (7.0, 1.0, 7.0))
    g.part(group, "Tower", "Tower", "Cream plaster", (6.0, 10.0, 6.0), (0, 1, 0))
    g.part(group, "Gallery", "Ring", "Timber", (2.9, 2.0, 2.9), (0, 5.0, 0))
    window(g, group, (0, 6.4, 2.36))
    cap = g.node(group, "Cap", (0, 11, 0))
    g.part(cap, "Hood", "Cone", "Roof tile", (5.0, 3.2, 5.0))
    axle = g.node(cap, "Axle", (0, 0.4, 2.9))
    g.part(axle, "Shaft", "Cylinder", "Iron", (0.5, 2.0, 0.5), (0, 0, -1.6), ("x", 90))
    rotor = g.node(axle, "Rotor")
    g.part(rotor, "Hub", "Ball", "Iron", (0.9, 0.9, 0.9), (0, -0.45, 0))
    for quarter in range(4):
        sail = g.node(rotor, "Sail", turn=("z", 20 + 90 * quarter))
        g.part(sail, "Spar", "Box", "Timber", (0.22, 7.4, 0.18))
        g.part(sail, "Cloth", "Box", "Cream plaster", (1.3, 5.6, 0.05), (0.75, 1.6, 0.05))
        for rung in range(6):
            g.part(sail, "Rung", "Box", "Timber", (1.5, 0.1, 0.1), (0.7, 1.6 + 1.1 * rung, 0.08))
    return rotor


def crane(g, parent, at, turn):
    """A crane with a load on a chain: every link hangs from the one above it."""
    group = g.node(parent, "Crane", at, turn)
    g.part(group, "Base", "Box", "Stone", (2.6, 0.6, 2.6))
    g.part(group, "Mast", "Box", "Timber", (0.6, 9.0, 0.6), (0, 0.6, 0))
    slew = g.node(group, "Slew", (0, 9.0, 0), ("y", 20))
    g.part(slew, "Boom", "Box", "Timber", (8.0, 0.5, 0.4), (2.4, 0.3, 0))
    g.part(slew, "Counterweight", "Box", "Iron", (1.2, 1.2, 1.0), (-1.6, -0.6, 0))
    g.part(slew, "Stay", "Box", "Iron", (6.0, 0.08, 0.08), (2.7, 1.3, 0), ("z", -17))
    g.part(slew, "Head", "Box", "Timber", (0.4, 1.9, 0.4), (0, 0.6, 0))
    link = g.node(slew, "Trolley", (5.6, 0.1, 0))
    g.part(link, "Block", "Box", "Iron", (0.7, 0.4, 0.5))
    for _ in range(16):
        link = g.node(link, "Link", (0, -0.28, 0), ("y", 90))
        g.part(link, "Ring", "Ring", "Iron", (0.13, 0.4, 0.19), turn=("x", 90))
    hook = g.node(link, "Hook", (0, -0.5, 0))
    g.part(hook, "Ring", "Ring", "Iron", (0.3, 0.5, 0.3), turn=("x", 90))
    load = g.node(hook, "Pallet", (0, -1.7, 0))
    g.part(load, "Boards", "Box", "Oak", (2.0, 0.15, 2.0))
    for k in range(4):
        x, z = -0.45 + 0.9 * (k % 2), -0.45 + 0.9 * (k // 2)
        g.part(load, "Sack", "Ball", "Cream plaster", (0.95, 0.9, 0.95), (x, 0.15, z))


def cart(g, parent, at, turn):
    """A two-wheeled cart; its right wheel is the left one, mirrored."""
    group = g.node(parent, "Cart", at, turn)
    g.part(group, "Bed", "Box", "Oak", (1.5, 0.5, 2.6), (0, 0.8, 0))
    g.part(group, "Hay", "Ball", "Lamp light", (1.6, 1.1, 2.4), (0, 0.95, 0))
    for x in (-0.6, 0.6):
        g.part(group, "Shaft", "Box", "Timber", (0.1, 0.1, 2.2), (x, 0.85, 2.3))
    for mirror in (1, -1):
        wheel = g.node(g.node(group, "Side", scale=(mirror, 1, 1)), "Wheel", (0.9, 0.75, 0), ("z", -90))
        g.part(wheel, "Rim", "Ring", "Iron", (0.7, 0.9, 0.7))
        g.part(wheel, "Hub", "Cylinder", "Timber", (0.26, 0.3, 0.26), (0, -0.12, 0))
        for spoke in range(6):
            g.part(wheel, "Spoke", "Box", "Timber", (1.36, 0.06, 0.07), (0, 0, 0), ("y", 30 * spoke))


def well(g, parent, at):
    """The well on the square."""
    group = g.node(parent, "Well", at)
    g.part(group, "Step", "Cylinder", "Stone", (4.2, 0.2, 4.2))
    g.part(group, "Basin", "Ring", "Stone", (1.3, 5.0, 1.3), (0, 0.6, 0))
    g.part(group, "Water", "Cylinder", "Glass", (2.4, 0.5, 2.4), (0, 0.2, 0))
    for x in (-1.3, 1.3):
        g.part(group, "Post", "Box", "Timber", (0.2, 2.8, 0.2), (x, 0.2, 0))
    g.part(group, "Roof", "Gable", "Roof tile", (3.4, 1.1, 2.2), (0, 2.9, 0))
    g.part(group, "Drum", "Cylinder", "Oak", (0.3, 2.6, 0.3), (1.3, 2.2, 0), ("z", 90))
    bucket = g.node(group, "Rope", (0, 2.2, 0.1))
    g.part(bucket, "Rope", "Cylinder", "Oak", (0.05, 0.9, 0.05), (0, -0.9, 0))
    g.part(bucket, "Bucket", "Tower", "Oak", (0.5, -0.45, 0.5), (0, -0.9, 0))


def bunting(g, parent, at):
    """Flags on a rope across the street; the rope sags."""
    group, count, span = g.node(parent, "Bunting", at), 13, 12.0
    for k in range(count):
        x = span * (k / (count - 1) - 0.5)
        flag = g.node(group, "Flag", (x, 0.045 * x * x, 0), ("z", math.degrees(math.atan(0.09 * x))))
        g.part(flag, "Rope", "Box", "Timber", (1.12, 0.04, 0.04))
        cloth = ("Red cloth", "Cream plaster", "Blue plaster")[k % 3]
        g.part(flag, "Cloth", "Gable", cloth, (0.6, 0.8, 0.04), turn=("z", 180))


def row(g, street, name, mirror, first):
    """One side of the street; the east side is built like the west side and mirrored."""
    side = g.node(street, name, scale=None if mirror == 1 else (-1, 1, 1))
    houses = g.node(side, "Houses", (-12, 0, 0), ("y", 90))
    for k in range(5):
        house(g, houses, (-24 + 11.4 * k, 0, 0), first + k)
    furniture = g.node(side, "Furniture")
    g.part(furniture, "Kerb", "Box", "Stone", (3.2, 0.25, 66.0), (-7.2, 0, 0))
    for k in range(5):
        lamp(g, furniture, (-6.0, 0.25, -24 + 12 * k), None, f"{name} light {k}" if k % 2 == 0 else None)
    for k in range(4):
        stall(g, furniture, (-4.6, 0, -18 + 12 * k + 3 * mirror), ("y", 90), k + first)
    cart(g, furniture, (-3.4, 0, 25 * mirror - 4), ("y", 160))
    garden = g.node(side, "Garden", (-22, 0, 0))
    branch(g, garden, (13.5, 0, 29), ("y", 50 + 30 * first), 2.3, 3)
    branch(g, garden, (1, 0, -12), ("y", 20 + 40 * first), 2.6, 3)
    for k in range(5):
        fir(g, garden, (-3 - 2.4 * (k % 2), 0, -28 + 12 * k), 1.1 + 0.25 * (k % 3))
    fence(g, garden, (8, 0, 36), ("y", 182), 14, -7)
    return side


def camera_turn(pitch, yaw):
    """A yaw about y, then a pitch about x, as a quaternion."""
    x, y = about("x", pitch), about("y", yaw)
    return plain((x[0] * y[3], y[1] * x[3], -y[1] * x[0], x[3] * y[3]), 7)


def make():
    """The text of the .gltf file and the bytes of the .bin file."""
    g = Gltf()
    root = g.node(None, "Workshop street")
    ground = g.node(root, "Ground")
    g.part(ground, "Meadow", "Box", "Grass", (110, 0.4, 110), (0, -0.45, 0))
    g.part(ground, "Street", "Box", "Stone", (13, 0.2, 70), (0, -0.18, 0))
    for k in range(40):
        g.part(ground, "Slab", "Box", ("Cream plaster", "Stone")[k % 7 % 2], (1.5, 0.08, 1.0),
               (-3.4 + 1.7 * (k % 5), -0.02, -30 + 7.5 * (k // 5) + 1.3 * (k % 2)), ("y", 17 * k % 23 - 11))
    street = g.node(root, "Street")
    row(g, street, "West side", 1, 0)
    row(g, street, "East side", -1, 3)
    for k in range(4):
        bunting(g, street, (0, 5.2, -21 + 13 * k))
    square = g.node(root, "Square", (0, 0, -40))
    g.part(square, "Paving", "Cylinder", "Stone", (26, 0.2, 26), (0, -0.15, 0))
    well(g, square, (0, 0, 3))
    crane(g, square, (9, 0, 1), ("y", 150))
    rotor = windmill(g, square, (-3, 0, -9), ("y", 12))
    g.node(root, "Sun", (20, 40, 30), extensions={"KHR_lights_punctual": {"light": 0}},
           rotation=camera_turn(-48, 35))
    g.node(root, "Overview", (5.2, 13.5, 47), camera=0, rotation=camera_turn(-11, 6))
    lights = [{"name": "Sun", "type": "directional", "color": [1, 0.96, 0.88], "intensity": 3},
              {"name": "Lantern", "type": "point", "color": [1, 0.85, 0.5], "intensity": 40, "range": 12}]
    cameras = [{"name": "Overview", "type": "perspective",
                "perspective": {"yfov": 0.8, "aspectRatio": 1.7778, "znear": 0.1, "zfar": 300}}]
    animation = g.turning(rotor, 8)
    return g.text(animation, lights, cameras), bytes(g.bytes)


def main():
    text, data = make()
    files = {FOLDER / "workshop.gltf": text.encode("ascii"), FOLDER / "workshop.bin": data}
    if sys.argv[1:] == ["--check"]:
        stale = [path.name for path, content in files.items() if not path.is_file() or path.read_bytes() != content]
        if stale:
            sys.exit(f"{' and '.join(stale)}: not what make_workshop.py writes; run it without --check")
        print("workshop.gltf and workshop.bin are what make_workshop.py writes")
    elif sys.argv[1:]:
        sys.exit("usage: make_workshop.py [--check]")
    else:
        for path, content in files.items():
            path.write_bytes(content)
            print(f"{path.name}: {len(content)} bytes")


if __name__ == "__main__":
    main()
