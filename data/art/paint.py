"""Puts pictures together: pieces from pieces/*.svg, painted with a material, lit from the top left.

A picture is a list of placed pieces. A piece knows no colours, only roles (body, core, shade ...);
the material that it is placed with gives them. A second word in the class of a shape fixes its
material, such as the gold hilt of every sword.
"""

import re
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass

SVG = "{http://www.w3.org/2000/svg}"
INK = "#140d18"

PLACED = re.compile(r"(?P<piece>[a-z-]+):(?P<material>[a-z]+)"
                    r"(?:\((?P<place>[^)]*)\))?(?P<mirror>\^)?(?:~(?P<opacity>[\d.]+))?$")


@dataclass(frozen=True)
class Placed:
    """One piece of a picture, relative to the centre of its tile."""
    piece: str
    material: str
    x: float = 0
    y: float = 0
    scale: float = 1
    turn: float = 0
    mirror: bool = False
    opacity: float = 1


def parse_picture(text):
    """Reads 'shield:sky heart:blood(0 2 .5 15)^~.8': x, y, scale and turn, mirrored, opacity."""
    picture = []
    for word in re.findall(r"[^\s(]+(?:\([^)]*\)[^\s]*)?", text):
        match = PLACED.match(word)
        if not match:
            raise ValueError(f"not a placed piece: {word}")
        numbers = [float(n) for n in (match["place"] or "").split()]
        picture.append(Placed(match["piece"], match["material"], *numbers,
                              mirror=bool(match["mirror"]), opacity=float(match["opacity"] or 1)))
    return picture


def read_table(path):
    """The rows of a table: cells between bars, # starts a comment."""
    rows = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.strip() and not line.startswith("#"):
            rows.append([cell.strip() for cell in line.split("|")])
    return rows


def number(value):
    return f"{value:.4g}"


class Painter:
    """Turns pictures into SVG text and collects the gradients that they use."""

    def __init__(self, folder):
        self._materials = {row[0]: row[1:4] for row in read_table(folder / "materials.txt")}
        self._pieces = {}
        for path in sorted((folder / "pieces").glob("*.svg")):
            for group in ElementTree.parse(path).getroot().iter(SVG + "g"):
                if "id" in group.attrib:
                    self._pieces[group.attrib["id"]] = group
        self._gradients = {}

    def definitions(self):
        return "".join(self._gradients[key] for key in sorted(self._gradients))

    def picture(self, placed_pieces, edge):
        """SVG of a whole picture; edge is the name of the filter that outlines each piece."""
        return "".join(self._place(placed, edge) for placed in placed_pieces)

    def _place(self, placed, edge):
        if placed.piece not in self._pieces:
            raise ValueError(f"no piece of the name {placed.piece}")
        group = self._pieces[placed.piece]
        mirror = -1 if placed.mirror else 1
        transform = (f"translate({number(placed.x)} {number(placed.y)}) "
                     f"rotate({number(placed.turn)}) "
                     f"scale({number(placed.scale * mirror)} {number(placed.scale)})")
        shapes = "".join(self._shape(shape, placed) for shape in group)
        flat = group.attrib.get("data-edge") == "none"
        attributes = "" if flat else f' filter="url(#{edge})"'
        if placed.opacity != 1:
            attributes += f' opacity="{number(placed.opacity)}"'
        # The filter is outside the transform, so that light and outline are the same for all.
        return f'<g{attributes}><g transform="{transform}">{shapes}</g></g>'

    def _shape(self, shape, placed):
        attributes = dict(shape.attrib)
        role, _, material = attributes.pop("class", "body").partition(" ")
        paint = self._role(role, material or placed.material, placed)
        for key, value in paint.items():
            attributes.setdefault(key, value)
        inside = "".join(self._shape(child, placed) for child in shape)
        text = " ".join(f'{key}="{value}"' for key, value in attributes.items())
        tag = shape.tag.replace(SVG, "")
        if tag == "g":
            text = " ".join(f'{key}="{value}"' for key, value in shape.attrib.items())
        return f"<{tag} {text}>{inside}</{tag}>" if inside else f"<{tag} {text}/>"

    def _role(self, role, material, placed):
        if material not in self._materials:
            raise ValueError(f"no material of the name {material}")
        light, middle, dark = self._materials[material]
        if role == "body":
            return {"fill": self._linear(material, "fall", placed)}
        if role == "rise":
            return {"fill": self._linear(material, "rise", placed)}
        if role == "core":
            return {"fill": self._linear(material, "core", placed)}
        if role == "halo":
            return {"fill": self._halo(material)}
        if role == "flat":
            return {"fill": middle}
        if role == "shade":
            return {"fill": dark, "fill-opacity": ".7"}
        if role == "ink":
            return {"fill": INK}
        if role == "shine":
            return {"fill": "#fff", "fill-opacity": ".6"}
        stroke = {"fill": "none", "stroke-linecap": "round", "stroke-linejoin": "round"}
        if role == "wire":
            return stroke | {"stroke": middle}
        if role == "glint":
            return stroke | {"stroke": light, "stroke-width": "2.4"}
        if role == "line":
            return stroke | {"stroke": dark, "stroke-width": "2.6"}
        if role == "inkline":
            return stroke | {"stroke": INK, "stroke-width": "2.6"}
        raise ValueError(f"no role of the name {role}")

    def _linear(self, material, kind, placed):
        light, middle, dark = self._materials[material]
        turn = 0 if kind == "rise" else placed.turn
        mirror = placed.mirror and kind != "rise"
        key = f"{material}-{kind}{number(turn).replace('-', 'm').replace('.', 'p')}" \
              + ("x" if mirror else "")
        if key not in self._gradients:
            ends = {"fall": 'x1=".15" y1="0" x2=".75" y2="1"',
                    "core": 'x1=".2" y1="0" x2=".7" y2="1"',
                    "rise": 'x1=".5" y1="0" x2=".5" y2="1"'}[kind]
            colours = {"fall": [(0, light), (.45, middle), (1, dark)],
                       "core": [(0, light), (1, middle)],
                       "rise": [(0, dark), (.55, middle), (1, light)]}[kind]
            back = "" if not mirror else "translate(1 0) scale(-1 1) "
            if turn:
                back += f"rotate({number(-turn)} .5 .5)"
            back = f' gradientTransform="{back.strip()}"' if back else ""
            stops = "".join(f'<stop offset="{number(at)}" stop-color="{colour}"/>'
                            for at, colour in colours)
            self._gradients[key] = \
                f'<linearGradient id="{key}" {ends}{back}>{stops}</linearGradient>'
        return f"url(#{key})"

    def _halo(self, material):
        key = f"{material}-halo"
        light, middle, _ = self._materials[material]
        self._gradients[key] = (
            f'<radialGradient id="{key}"><stop offset="0" stop-color="{light}" stop-opacity=".95"/>'
            f'<stop offset=".45" stop-color="{middle}" stop-opacity=".5"/>'
            f'<stop offset="1" stop-color="{middle}" stop-opacity="0"/></radialGradient>')
        return f"url(#{key})"


def edge_filter(name, box, unit, rim=None):
    """The look that all pictures share: dark outline, light from the top left, a soft shadow.

    unit is the number of drawing units of half a pixel at single density; rim, if given, is the
    colour of a second, outer line that keeps the picture apart from a dark ground.
    """
    x, y, width, height = box
    outer = "" if rim is None else (
        f'<feGaussianBlur in="SourceAlpha" stdDeviation="{number(1.9 * unit)}"/>'
        '<feComponentTransfer><feFuncA type="linear" slope="9"/></feComponentTransfer>'
        f'<feComposite in2="SourceAlpha" operator="over" result="far"/>'
        f'<feFlood flood-color="{rim}" flood-opacity=".9"/>'
        '<feComposite in2="far" operator="in" result="outer"/>')
    shadow = "" if rim is not None else (
        f'<feGaussianBlur in="SourceAlpha" stdDeviation="{number(2.4 * unit)}"/>'
        f'<feOffset dx="{number(1.6 * unit)}" dy="{number(2.2 * unit)}"/>'
        '<feComponentTransfer result="outer"><feFuncA type="linear" slope=".75"/>'
        '</feComponentTransfer><feFlood flood-color="#000"/>'
        '<feComposite in2="outer" operator="in" result="outer"/>')
    return (
        f'<filter id="{name}" filterUnits="userSpaceOnUse" x="{number(x)}" y="{number(y)}" '
        f'width="{number(width)}" height="{number(height)}" color-interpolation-filters="sRGB">'
        f'{outer}{shadow}'
        f'<feGaussianBlur in="SourceAlpha" stdDeviation="{number(.95 * unit)}"/>'
        '<feComponentTransfer result="near"><feFuncA type="linear" slope="6"/></feComponentTransfer>'
        f'<feFlood flood-color="{INK}"/><feComposite in2="near" operator="in" result="outline"/>'
        f'<feOffset in="SourceAlpha" dx="{number(1.3 * unit)}" dy="{number(1.6 * unit)}" '
        'result="moved"/><feFlood flood-color="#fff" flood-opacity=".62"/>'
        '<feComposite in2="SourceAlpha" operator="in"/>'
        '<feComposite in2="moved" operator="out" result="light"/>'
        f'<feOffset in="SourceAlpha" dx="{number(-1.4 * unit)}" dy="{number(-1.7 * unit)}" '
        'result="moved"/><feFlood flood-color="#000" flood-opacity=".34"/>'
        '<feComposite in2="SourceAlpha" operator="in"/>'
        '<feComposite in2="moved" operator="out" result="shade"/>'
        '<feMerge><feMergeNode in="outer"/><feMergeNode in="outline"/>'
        '<feMergeNode in="SourceGraphic"/><feMergeNode in="shade"/><feMergeNode in="light"/>'
        '</feMerge></filter>')
