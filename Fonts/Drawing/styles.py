"""What the letters of one source have in common, in font units.

V, Vr   straight and round vertical strokes of small letters; H their thin horizontal parts
C, Cr, Hc  the same for capitals
n, N    the counter of n, and that of H but for a factor
sb, rb  side bearings beside straight and round strokes
kh, kv  how square curves are along the horizontal and the vertical
"""

from types import SimpleNamespace

REGULAR = dict(V=80, H=66, C=86, Hc=71, n=226, N=262, sb=72, rb=42, xh=504, kh=0.560, kv=0.575)
STYLES = {
    "Regular": REGULAR,
    "Thin": dict(V=24, H=22, C=26, Hc=23, n=258, N=310, sb=80, rb=54, xh=496, kh=0.556, kv=0.565),
    "Black": dict(V=184, H=134, C=204, Hc=146, n=166, N=196, sb=44, rb=24, xh=526, kh=0.570, kv=0.590),
    "Condensed": dict(V=75, H=63, C=82, Hc=68, n=136, N=158, sb=58, rb=36, xh=508, kh=0.560, kv=0.640),
    "Wide": dict(V=84, H=68, C=92, Hc=74, n=326, N=372, sb=82, rb=46, xh=500, kh=0.575, kv=0.560),
    "Black Condensed": dict(V=146, H=120, C=160, Hc=130, n=86, N=104, sb=36, rb=22, xh=530, kh=0.575, kv=0.660),
    # Drawn for the letters that the blend of Regular and Black makes too dark.
    "SemiBold": dict(V=122, H=88, C=134, Hc=98, n=206, N=238, sb=62, rb=36, xh=512, kh=0.564, kv=0.582),
    "SemiBold Condensed": dict(V=102, H=80, C=112, Hc=88, n=124, N=142, sb=50, rb=31, xh=516, kh=0.566, kv=0.648),
}


def style(name, **changes):
    """The style of that name; `changes` are of the glyph axes: terminal, bowl_height, bend, head."""
    v = dict(STYLES[name])
    s = SimpleNamespace(**v)
    s.Vr, s.Cr = s.V * 1.05 + 1, s.C * 1.05 + 1
    s.ov = 10 + s.V * 0.012
    s.cap, s.asc, s.desc = 700, 748, -206
    s.cut = 10 + s.V * 0.10
    s.notch = 46 + s.V * 0.24
    s.join = min(0.66 * s.V, 0.27 * s.V + 31)
    s.dot = s.V * 1.10 + 20 if s.V > 60 else s.V * 1.3 + 14
    s.bowl_low = 26 - s.V * 0.05
    s.terminal, s.bowl_height, s.bend, s.head = 0.0, 0.582, 0.0, 0.5
    for key, value in changes.items():
        assert hasattr(s, key), key
        setattr(s, key, value)
    return s
