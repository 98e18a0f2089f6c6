# SPDX-License-Identifier: GPL-3.0-or-later
"""A canvas of floating-point colours with the shading that skins are made of.

Shapes are vector paths in panel pixels; they become coverage masks at SUPERSAMPLE times the wanted
resolution, and masks are painted, blurred, shifted and cut out of each other. The finished canvas is
averaged down in linear light, so that edges on whole pixels stay sharp and slanted ones stay smooth.
"""

from dataclasses import dataclass

import cairo
import numpy as np

SUPERSAMPLE = 6
GAMMA = 2.2


def rgb(text):
    """An array of red, green, blue in 0..1 from a "#RRGGBB" text."""
    return np.array([int(text[i : i + 2], 16) / 255.0 for i in (1, 3, 5)], np.float32)


def mix(a, b, t):
    """The colour between a and b, both "#RRGGBB" texts or arrays."""
    a, b = (rgb(c) if isinstance(c, str) else c for c in (a, b))
    return a + (b - a) * t


def _box(values, radius, axis):
    """A running mean over 2 * radius + 1 values, with zeros outside."""
    size = 2 * radius + 1
    pad = [(0, 0)] * values.ndim
    pad[axis] = (radius + 1, radius)
    total = np.cumsum(np.pad(values, pad), axis=axis, dtype=np.float64)
    high = np.take(total, range(size, total.shape[axis]), axis=axis)
    low = np.take(total, range(0, total.shape[axis] - size), axis=axis)
    return ((high - low) / size).astype(np.float32)


def blurred(values, sigma):
    """Nearly a Gaussian blur: three running means. `sigma` is in array cells."""
    radius = max(1, round(sigma * 0.97))
    for _ in range(3):
        values = _box(_box(values, radius, 0), radius, 1)
    return values


@dataclass
class Mask:
    """Coverage 0..1 of a rectangle of the canvas whose top left cell is (x, y)."""

    a: np.ndarray
    x: int
    y: int
    scale: float  # cells in a panel pixel

    def blur(self, sigma):
        """`sigma` in panel pixels."""
        return Mask(blurred(self.a, sigma * self.scale), self.x, self.y, self.scale)

    def shift(self, dx, dy):
        """Moved by panel pixels inside the same rectangle; what leaves it is lost."""
        dx, dy = round(dx * self.scale), round(dy * self.scale)
        h, w = self.a.shape
        out = np.zeros_like(self.a)
        source = self.a[max(0, -dy) : h - max(0, dy), max(0, -dx) : w - max(0, dx)]
        out[max(0, dy) : max(0, dy) + source.shape[0], max(0, dx) : max(0, dx) + source.shape[1]] = source
        return Mask(out, self.x, self.y, self.scale)

    def times(self, other):
        """The product with another mask of the same rectangle or with an array."""
        return Mask(self.a * getattr(other, "a", other), self.x, self.y, self.scale)

    def outside(self):
        return Mask(1.0 - self.a, self.x, self.y, self.scale)


class Canvas:
    """Colours in 0..1, `width` by `height` panel pixels at `resolution` output pixels each."""

    def __init__(self, width, height, resolution=1):
        self.width, self.height, self.resolution = width, height, resolution
        self.scale = SUPERSAMPLE * resolution
        self.c = np.zeros((height * self.scale, width * self.scale, 3), np.float32)

    def copy(self):
        other = Canvas.__new__(Canvas)
        other.__dict__.update(self.__dict__)
        other.c = self.c.copy()
        return other

    def shape(self, path, pad=8.0, stroke=None):
        """The mask of a path: `path(ctx)` draws it in panel pixels; `stroke` is a line width or None to fill.

        `pad` panel pixels of room around it keep blurs and shifts whole.
        """
        probe = cairo.Context(cairo.RecordingSurface(cairo.Content.ALPHA, None))
        self._pen(probe, stroke)
        path(probe)
        x0, y0, x1, y1 = probe.fill_extents() if stroke is None else probe.stroke_extents()
        s = self.scale
        left, top = max(0, int((x0 - pad) * s)), max(0, int((y0 - pad) * s))
        right = min(self.width * s, int((x1 + pad) * s) + 1)
        bottom = min(self.height * s, int((y1 + pad) * s) + 1)
        surface = cairo.ImageSurface(cairo.FORMAT_A8, right - left, bottom - top)
        ctx = cairo.Context(surface)
        ctx.translate(-left, -top)
        ctx.scale(s, s)
        self._pen(ctx, stroke)
        path(ctx)
        if stroke is None:
            ctx.fill()
        else:
            ctx.stroke()
        surface.flush()
        cells = np.frombuffer(surface.get_data(), np.uint8).reshape(bottom - top, surface.get_stride())
        return Mask(cells[:, : right - left].astype(np.float32) / 255.0, left, top, float(s))

    @staticmethod
    def _pen(ctx, stroke):
        ctx.set_antialias(cairo.ANTIALIAS_BEST)
        ctx.set_line_cap(cairo.LINE_CAP_ROUND)
        ctx.set_line_join(cairo.LINE_JOIN_ROUND)
        if stroke is not None:
            ctx.set_line_width(stroke)

    def grid(self, mask):
        """The x and y coordinates, in panel pixels, of the cells of a mask."""
        h, w = mask.a.shape
        x = (mask.x + np.arange(w, dtype=np.float32) + 0.5) / self.scale
        y = (mask.y + np.arange(h, dtype=np.float32) + 0.5) / self.scale
        return x[None, :], y[:, None]

    def _window(self, mask):
        h, w = mask.a.shape
        return self.c[mask.y : mask.y + h, mask.x : mask.x + w]

    def paint(self, mask, colour, alpha=1.0):
        """Covers with a colour: a "#RRGGBB" text, an array, or a function of (x, y) giving either."""
        if callable(colour):
            colour = colour(*self.grid(mask))
        elif isinstance(colour, str):
            colour = rgb(colour)
        window, a = self._window(mask), (mask.a * alpha)[..., None]
        window += (colour - window) * a

    def light(self, mask, colour, strength=1.0):
        """Adds light of a colour, less where it is bright already (the screen mode of paint programs)."""
        colour = rgb(colour) if isinstance(colour, str) else colour
        window = self._window(mask)
        window += (1.0 - window) * np.clip(mask.a * strength, 0.0, 1.0)[..., None] * colour

    def shade(self, mask, strength):
        """Darkens towards black."""
        self._window(mask)[...] *= 1.0 - np.clip(mask.a * strength, 0.0, 1.0)[..., None]

    def scale_by(self, mask, factors):
        """Multiplies the colours under a mask by an array of factors (a texture)."""
        window = self._window(mask)
        window *= 1.0 + (factors[..., None] - 1.0) * mask.a[..., None]
        np.clip(window, 0.0, 1.0, out=window)

    def finished(self):
        """The picture as bytes, height x width x 3, at the canvas's resolution."""
        n = SUPERSAMPLE
        h, w = self.height * self.resolution, self.width * self.resolution
        linear = np.clip(self.c, 0.0, 1.0) ** GAMMA
        mean = linear.reshape(h, n, w, n, 3).mean(axis=(1, 3))
        return np.round(mean ** (1.0 / GAMMA) * 255.0).astype(np.uint8)


def vertical(y0, y1, *stops):
    """A gradient from top y0 to bottom y1 through evenly spaced colours, or (position, colour) pairs."""
    if not isinstance(stops[0], tuple):
        stops = [(i / (len(stops) - 1), c) for i, c in enumerate(stops)]
    at = [p for p, _ in stops]
    colours = np.array([rgb(c) if isinstance(c, str) else c for _, c in stops])

    def colour(x, y):
        t = np.broadcast_to((y - y0) / (y1 - y0), np.broadcast(x, y).shape)
        return np.stack([np.interp(t, at, colours[:, k]) for k in range(3)], axis=-1).astype(np.float32)

    return colour


def box(x, y, w, h, r=0.0):
    """A path: a rectangle, its corners rounded by r."""

    def path(ctx):
        if r <= 0:
            ctx.rectangle(x, y, w, h)
            return
        quarter = np.pi / 2
        ctx.new_sub_path()
        ctx.arc(x + w - r, y + r, r, -quarter, 0)
        ctx.arc(x + w - r, y + h - r, r, 0, quarter)
        ctx.arc(x + r, y + h - r, r, quarter, 2 * quarter)
        ctx.arc(x + r, y + r, r, 2 * quarter, 3 * quarter)
        ctx.close_path()

    return path


def disc(cx, cy, r):
    """A path: a circle."""

    def path(ctx):
        ctx.new_sub_path()
        ctx.arc(cx, cy, r, 0, 2 * np.pi)
        ctx.close_path()

    return path
