"""PNG files of eight bits a channel, read and written with nothing but the standard library.

An image is (width, height, rows); a row is bytes, `channels` of them a pixel.
"""
import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
RGB, RGBA = 2, 6
CHANNELS = {RGB: 3, RGBA: 4}


def _chunks(data):
    place = len(SIGNATURE)
    while place < len(data):
        length, = struct.unpack_from(">I", data, place)
        yield data[place + 4:place + 8], data[place + 8:place + 8 + length]
        place += 12 + length


def _undo_paeth(row, above, step):
    for i in range(step):
        row[i] = (row[i] + above[i]) & 255
    for i in range(step, len(row)):
        left, up, corner = row[i - step], above[i], above[i - step]
        by_left, by_up, by_corner = abs(up - corner), abs(left - corner), abs(left + up - 2 * corner)
        if by_left <= by_up and by_left <= by_corner:
            up = left
        elif by_up > by_corner:
            up = corner
        row[i] = (row[i] + up) & 255


def _undo_average(row, above, step):
    for i, up in enumerate(above):
        row[i] = (row[i] + ((row[i - step] if i >= step else 0) + up) // 2) & 255


def _unfilter(kind, row, above, step):
    """The bytes of a row, of which each filter stores the distance from some neighbours."""
    if kind == 1:
        for i in range(step, len(row)):
            row[i] = (row[i] + row[i - step]) & 255
    elif kind == 2:
        row = bytearray((a + b) & 255 for a, b in zip(row, above))
    elif kind == 3:
        _undo_average(row, above, step)
    elif kind == 4:
        _undo_paeth(row, above, step)
    return row


def read(data):
    """(width, height, channels, rows) of an image with eight bits a channel, not interlaced."""
    if not data.startswith(SIGNATURE):
        raise ValueError("not a PNG file")
    parts = list(_chunks(data))
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", parts[0][1])
    if depth != 8 or colour not in CHANNELS or interlace:
        raise ValueError("a kind of PNG that is not read here")
    step = CHANNELS[colour]
    raw = zlib.decompress(b"".join(body for name, body in parts if name == b"IDAT"))
    stride = width * step + 1
    rows, above = [], bytes(width * step)
    for y in range(height):
        above = bytes(_unfilter(raw[y * stride], bytearray(raw[y * stride + 1:(y + 1) * stride]), above, step))
        rows.append(above)
    return width, height, step, rows


def _cost(row):
    """How badly a filtered row packs: the sum of its distances from zero."""
    return sum(byte if byte < 128 else 256 - byte for byte in row)


def _filtered(row, above, step):
    tries = ((1, bytes((a - b) & 255 for a, b in zip(row, bytes(step) + row))),
             (2, bytes((a - b) & 255 for a, b in zip(row, above))))
    kind, best = min(tries, key=lambda one: _cost(one[1]))
    return bytes([kind]) + best


def _chunk(name, body):
    return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))


def write(width, height, channels, rows):
    """The file's bytes: always the same for the same pixels."""
    colour = next(kind for kind, count in CHANNELS.items() if count == channels)
    filtered, above = [], bytes(width * channels)
    for row in rows:
        filtered.append(_filtered(row, above, channels))
        above = row
    header = struct.pack(">IIBBBBB", width, height, 8, colour, 0, 0, 0)
    return (SIGNATURE + _chunk(b"IHDR", header) + _chunk(b"IDAT", zlib.compress(b"".join(filtered), 9))
            + _chunk(b"IEND", b""))
