"""Pictures as the program holds them in memory, so that it need not decode them at its start.

A file has the width and the height, then the rows from the top without gaps: a 32-bit number for each
pixel, its alpha in the highest byte, then red, green and blue, each multiplied by the alpha. All numbers
have their lowest byte first.
"""

import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
CHANNELS = 4


def chunks(content):
    at = len(SIGNATURE)
    while at + 8 <= len(content):
        length, name = struct.unpack(">I4s", content[at:at + 8])
        yield name, content[at + 8:at + 8 + length]
        at += length + 12


def paeth(left, up, corner):
    guess = left + up - corner
    return min((left, up, corner), key=lambda one: abs(guess - one))


def rows_of(data, width):
    """The rows of bytes behind the filters of the PNG format."""
    stride = width * CHANNELS
    above = bytearray(stride)
    for start in range(0, len(data), stride + 1):
        kind, row = data[start], bytearray(data[start + 1:start + 1 + stride])
        for i in range(stride):
            left, corner = (row[i - CHANNELS], above[i - CHANNELS]) if i >= CHANNELS else (0, 0)
            guess = (0, left, above[i], (left + above[i]) // 2, paeth(left, above[i], corner))[kind]
            row[i] = (row[i] + guess) & 255
        yield row
        above = row


def multiplied(band, alpha):
    """As the toolkit rounds it."""
    product = band * alpha
    return (product + (product >> 8) + 128) >> 8


def unpack(picture, target):
    """Writes the pixels of a PNG file, 8-bit RGBA without interlacing, into the target."""
    header, packed = None, b""
    for name, chunk in chunks(picture.read_bytes()):
        if name == b"IHDR":
            header = struct.unpack(">IIBBBBB", chunk)
        elif name == b"IDAT":
            packed += chunk
    if not header or header[2:] != (8, 6, 0, 0, 0):
        raise ValueError(f"{picture.name}: not in 8-bit RGBA")
    width, height = header[:2]
    pixels = bytearray(struct.pack("<II", width, height))
    for row in rows_of(zlib.decompress(packed), width):
        for i in range(0, len(row), CHANNELS):
            red, green, blue, alpha = row[i:i + CHANNELS]
            pixels += bytes((multiplied(blue, alpha), multiplied(green, alpha),
                             multiplied(red, alpha), alpha))
    target.write_bytes(pixels)
