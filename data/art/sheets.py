"""The picture files of the program: their names, their sizes, and what is drawn on each."""

import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

from paint import INK, Painter, edge_filter, number, parse_picture, read_table

# A spell outside the spellbook: grey, and three quarters as bright, or a picture of stone or bone would
# look the same in both states.
GREY = ('<filter id="grey" filterUnits="userSpaceOnUse" x="0" y="0" width="{0}" height="{1}" '
        'color-interpolation-filters="sRGB"><feColorMatrix type="matrix" values="'
        '.24 .38 .11 0 .015  .24 .38 .11 0 .015  .24 .38 .11 0 .015  0 0 0 1 0"/></filter>')

ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
SMALL_ICON_LIMIT = 24

# What the first page shows. The program has these unpacked, as NAME.argb.
AT_START = ("page_necromancer", "page_paladin", "reagents", "reagents_small", "spells_colour_1",
            "spells_grey_1", "spellwick-48")

# The whole strips are for looking at all icons in one picture.
NOT_IN_PROGRAM = ("spells_colour.png", "spells_colour@2x.png", "spells_grey.png",
                  "spells_grey@2x.png", "spellwick.svg",
                  *(f"spellwick-{size}.png" for size in (16, 22, 24, 32, 64, 128)),
                  *(f"{name}.png" for name in AT_START))


@dataclass(frozen=True)
class Rendered:
    """A PNG file made of SVG text."""
    name: str
    svg: str
    width: int
    height: int

    def write(self, folder):
        subprocess.run(["rsvg-convert", "--width", str(self.width), "--height", str(self.height),
                        "--output", str(folder / self.name)],
                       input=self.svg.encode("utf-8"), check=True)


@dataclass(frozen=True)
class Copied:
    """A vector file that the program uses as it is."""
    name: str
    source: Path

    def write(self, folder):
        shutil.copyfile(self.source, folder / self.name)


def both_densities(name, svg, width, height):
    return [Rendered(f"{name}.png", svg, width, height),
            Rendered(f"{name}@2x.png", svg, 2 * width, 2 * height)]


def document(width, height, definitions, body):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
            f'width="{width}" height="{height}"><defs>{definitions}</defs>{body}</svg>')


class Grounds:
    """The tiles behind the pictures: one colour for each circle, one frame for each school."""

    def __init__(self, folder):
        self._rows = {row[0]: row[1:] for row in read_table(folder / "grounds.txt")}

    def definitions(self):
        text = ""
        for name, (heart, border, frame_light, frame_dark, _, _) in sorted(self._rows.items()):
            text += (f'<radialGradient id="ground-{name}" cx=".42" cy=".36" r=".78">'
                     f'<stop offset="0" stop-color="{heart}"/>'
                     f'<stop offset="1" stop-color="{border}"/></radialGradient>'
                     f'<linearGradient id="frame-{name}" x1=".1" y1="0" x2=".9" y2="1">'
                     f'<stop offset="0" stop-color="{frame_light}"/>'
                     f'<stop offset="1" stop-color="{frame_dark}"/></linearGradient>')
        return text

    def tile(self, name, width, height):
        """A tile around the origin, with corners cut round and a dark line that closes it."""
        *_, relief, relief_opacity = self._rows[name]
        w, h = width / 2, height / 2
        text = (f'<rect x="{number(-w + .6)}" y="{number(-h + .6)}" width="{number(width - 1.2)}" '
                f'height="{number(height - 1.2)}" rx="11" fill="{INK}"/>'
                f'<rect x="{number(-w + 2)}" y="{number(-h + 2)}" width="{number(width - 4)}" '
                f'height="{number(height - 4)}" rx="9.6" fill="url(#frame-{name})"/>'
                f'<rect x="{number(-w + 4)}" y="{number(-h + 4)}" width="{number(width - 8)}" '
                f'height="{number(height - 8)}" rx="7.8" fill="url(#ground-{name})"/>')
        return text + self._relief(relief, relief_opacity, w - 4, h - 4)

    def _relief(self, kind, opacity, w, h):
        """A faint pattern on the ground that distinguishes the schools."""
        if kind == "ring":
            return (f'<circle r="{number(min(w, h) - 3)}" fill="none" stroke="#fff" '
                    f'stroke-opacity="{opacity}" stroke-width="2.4"/>')
        if kind == "rays":
            rays = "".join(f'<path d="M0,0 L{number(w)},-6 L{number(w)},6 Z" '
                           f'transform="rotate({turn})"/>' for turn in range(15, 375, 30))
            return f'<g fill="#fff" fill-opacity="{opacity}">{rays}</g>'
        if kind == "mist":
            return (f'<path d="M{number(-w)},{number(h - 12)} C-24,{number(h - 26)} '
                    f'-12,{number(h - 8)} 0,{number(h - 14)} S 24,{number(h - 28)} '
                    f'{number(w)},{number(h - 14)} V{number(h - 6)} Q{number(w)},{number(h)} '
                    f'{number(w - 6)},{number(h)} H{number(-w + 6)} Q{number(-w)},{number(h)} '
                    f'{number(-w)},{number(h - 6)} Z" fill="#8fd06a" fill-opacity="{opacity}"/>')
        return ""


def clip(name, width, height):
    """The inside of a tile's frame, for pictures that reach over the edge."""
    return (f'<clipPath id="{name}"><rect x="{number(4 - width / 2)}" y="{number(4 - height / 2)}" '
            f'width="{number(width - 8)}" height="{number(height - 8)}" rx="7.8"/></clipPath>')


CELL, COLUMNS, LINES = 84, 8, 12  # of the spell strips, in units of the vectors


def spell_strips(folder, painter, grounds):
    """Twelve rows of eight icons, 84 units per cell, in colour and in shades of grey. Each row also gets
    a file of its own: the program shows one row at a time and reads no more."""
    body = ""
    lines = [""] * LINES
    for row, _, ground, picture in read_table(folder / "spells.txt"):
        line, column = divmod(int(row), COLUMNS)
        x, y = (column + .5) * CELL, (line + .5) * CELL
        icon = (f'{grounds.tile(ground, CELL, CELL)}<g clip-path="url(#tile)">'
                f'{painter.picture(parse_picture(picture), "edge")}</g></g>')
        body += f'<g transform="translate({number(x)} {number(y)})">{icon}'
        lines[line] += f'<g transform="translate({number(x)} {number(CELL / 2)})">{icon}'
    sheets = spell_sheets("", painter, grounds, body, LINES)
    for line, icons in enumerate(lines):
        sheets += spell_sheets(f"_{line + 1}", painter, grounds, icons, 1)
    return sheets


def spell_sheets(suffix, painter, grounds, body, lines):
    width, height = COLUMNS * CELL, lines * CELL
    definitions = (grounds.definitions() + painter.definitions() + clip("tile", CELL, CELL)
                   + edge_filter("edge", (-CELL / 2, -CELL / 2, CELL, CELL), 1)
                   + GREY.format(width, height))
    colour = document(width, height, definitions, body)
    grey = document(width, height, definitions, f'<g filter="url(#grey)">{body}</g>')
    return (both_densities(f"spells_colour{suffix}", colour, width // 2, height // 2)
            + both_densities(f"spells_grey{suffix}", grey, width // 2, height // 2))


def reagent_strips(folder, painter):
    """Fourteen pictures in a row, without a ground; a light rim keeps them visible on dark."""
    rows = read_table(folder / "reagents.txt")
    sheets = []
    for name, width, height, unit in (("reagents", 28, 20, .95), ("reagents_small", 25, 15, .9)):
        scale = 60 / height  # every cell is 60 units high
        cell = width * scale
        body = ""
        for index, (_, _, picture) in enumerate(rows):
            body += (f'<g transform="translate({number((index + .5) * cell)} 30)">'
                     f'{painter.picture(parse_picture(picture), "edge")}</g>')
        definitions = painter.definitions() + edge_filter(
            "edge", (-cell / 2, -30, cell, 60), unit * scale / 2.6, rim="#fff6e0")
        svg = document(number(cell * len(rows)), 60, definitions, body)
        sheets += both_densities(name, svg, width * len(rows), height)
    return sheets


def page_pictures(folder, painter, grounds):
    """The two shortcuts to the Necromancer and the Paladin pages."""
    width, height = 86, 94
    sheets = []
    for name, ground, picture in read_table(folder / "pages.txt"):
        body = (f'<g transform="translate(43 47)">{grounds.tile(ground, width, height)}'
                f'<g clip-path="url(#tile)">{painter.picture(parse_picture(picture), "edge")}</g></g>')
        definitions = (grounds.definitions() + painter.definitions() + clip("tile", width, height)
                       + edge_filter("edge", (-43, -47, 86, 94), 1))
        sheets += both_densities(f"page_{name}", document(width, height, definitions, body),
                                 width // 2, height // 2)
    return sheets


def program_icons(folder):
    large = folder / "icon" / "spellwick.svg"
    small = folder / "icon" / "spellwick-small.svg"
    sheets = [Copied("spellwick.svg", large)]
    for size in ICON_SIZES:
        source = small if size <= SMALL_ICON_LIMIT else large
        sheets.append(Rendered(f"spellwick-{size}.png", source.read_text(encoding="utf-8"),
                               size, size))
    return sheets


def all_sheets(folder):
    painter, grounds = Painter(folder), Grounds(folder)
    return (spell_strips(folder, painter, grounds) + reagent_strips(folder, painter)
            + page_pictures(folder, painter, grounds) + program_icons(folder))
