# SPDX-License-Identifier: GPL-3.0-or-later
"""Movies that loop, lie and swell: AVI, QuickTime, MPEG and what else a movie library opens behind their names."""

import functools
import struct

from PIL import Image

from .parts import HALF_32, MOST_32, atom, bomb, chunk, little, nested, noise, riff, with_hole

MATRIX = struct.pack(">9I", 0x10000, 0, 0, 0, 0x10000, 0, 0, 0, 0x40000000)


@functools.cache
def still(size=(64, 48)):
    """A frame of motion JPEG."""
    import io

    kept = io.BytesIO()
    Image.new("RGB", size, "#803020").save(kept, "JPEG")
    return kept.getvalue()


def video(width=64, height=48, codec=b"MJPG", scale=1, rate=25, bits=24, size=40, length=50):
    head = b"vids" + codec + little(0, 0, 0, scale, rate, 0, length, MOST_32, MOST_32, 0) + bytes(8)
    shape = struct.pack("<IiiHH4sIiiII", size, width, height, 1, bits, codec, 0, 0, 0, 0, 0)
    return riff(b"strl", chunk(b"strh", head), chunk(b"strf", shape), name=b"LIST")


def sound(tag=1, channels=2, rate=44100, align=4, bits=16, scale=1, head_rate=44100):
    head = b"auds" + bytes(4) + little(0, 0, 0, scale, head_rate, 0, MOST_32, MOST_32, MOST_32, align) + bytes(8)
    return riff(b"strl", chunk(b"strh", head), chunk(b"strf", struct.pack("<HHIIHHH", tag, channels, rate, 4 * rate & MOST_32, align, bits, 0)), name=b"LIST")


def frames(count=25, one=None):
    return [chunk(b"00dc", one or still()) for _ in range(count)]


def avi(*streams, period=40000, count=None, pictures=None, size=None, movie_size=None, index=b"", before=b""):
    streams = streams or (video(),)
    head = chunk(b"avih", little(period, MOST_32, 0, 0x10, MOST_32, 0, len(streams) if count is None else count, MOST_32, 64, 48) + bytes(16))
    movie = riff(b"movi", *(frames() if pictures is None else pictures), name=b"LIST", size=movie_size)
    return riff(b"AVI ", riff(b"hdrl", head, *streams, name=b"LIST"), before, movie, index, size=size)


def table(entries, count=None, kind=0, longs=4, sub=0):
    """An index of the newer form."""
    return struct.pack("<HBBI4sIII", longs, sub, kind, len(entries) if count is None else count, b"00dc", 0, 0, 0) + b"".join(entries)


def with_index(stream, entries):
    return riff(b"strl", stream[12:], chunk(b"indx", entries), name=b"LIST")


def avis():
    wide = chunk(b"00dc", still()[:-2] + b"\xff\xd9")
    to_itself = [struct.pack("<QII", 4, 24 + 16 * 4, 25)] * 2000
    lies = chunk(b"idx1", b"".join(b"00dc" + little(0x10, n * 7919 & MOST_32, MOST_32) for n in range(20000)))
    same = chunk(b"idx1", (b"00dc" + little(0x10, 4, 16)) * 100_000)
    big = bytearray(still())
    place = big.index(b"\xff\xc0")
    big[place + 5:place + 9] = struct.pack(">HH", 32000, 32000)
    lists = nested(20000, lambda size: b"LIST" + struct.pack("<I", size + 4) + b"rec ")
    return [
        ("period_none.avi", avi(period=0)), ("scale_none.avi", avi(video(scale=0, rate=0))),
        ("rate_most.avi", avi(video(rate=MOST_32))),
        ("scale_most.avi", avi(video(scale=MOST_32, rate=1))), ("sides_most.avi", avi(video(2**31 - 1, -(2**31)))),
        ("sides_none.avi", avi(video(0, 0))),
        ("raw_16000.avi", avi(video(16000, 16000, b"\0\0\0\0"))), ("raw_palette.avi", avi(video(64, 48, b"\0\0\0\0", bits=8))),
        ("jpeg_32000.avi", avi(video(32000, 32000), pictures=frames(25, bytes(big)))),
        ("shape_most.avi", avi(video(size=MOST_32))), ("streams_told.avi", avi(count=MOST_32)),
        ("streams_3000.avi", avi(*[video(length=1)] * 3000)), ("no_stream.avi", avi(count=0, pictures=[wide])),
        ("sound_align_none.avi", avi(video(), sound(align=0))), ("sound_channels.avi", avi(video(), sound(channels=65535))),
        ("sound_rate_most.avi", avi(video(), sound(rate=MOST_32))),
        ("sound_alone.avi", avi(sound(scale=0, head_rate=0), pictures=[chunk(b"00wb", bytes(40000))])),
        ("whole_most.avi", avi(size=MOST_32)), ("movie_most.avi", avi(movie_size=MOST_32)),
        ("movie_none.avi", avi(movie_size=0)), ("no_frames.avi", avi(pictures=[])),
        ("frame_most.avi", avi(pictures=[chunk(b"00dc", still(), MOST_32)])),
        ("frames_empty.avi", avi(pictures=[chunk(b"00dc")] * 100_000)), ("index_lies.avi", avi(index=lies)),
        ("index_same.avi", avi(index=same)), ("index_loops.avi", avi(with_index(video(), table(to_itself)))),
        ("index_most.avi", avi(with_index(video(), table(to_itself[:1], MOST_32)))),
        ("index_kind.avi", avi(with_index(video(), table(to_itself[:4], 4, 1, 0, 255)))),
        ("lists_in_lists.avi", avi(pictures=[lists])), ("junk.avi", avi(before=chunk(b"JUNK") * 100_000)),
        ("many_riff.avi", avi() + riff(b"AVIX", riff(b"movi", name=b"LIST")) * 20_000),
        *((f"codec_{name.decode().lower()}.avi", avi(video(720, 576, name), pictures=frames(30, noise(name, 3000))))
          for name in (b"H264", b"HEVC", b"XVID", b"CVID", b"IV50", b"WMV3", b"VP80", b"VP90", b"AV01", b"FFV1", b"HFYU", b"dvsd", b"TSCC", b"DUCK")),
        ("hole.avi", with_hole(avi(movie_size=MOST_32, pictures=[]), 1 << 62)),
    ]


def track(number=1, width=64, height=48, scale=600, length=600, matrix=MATRIX, edits=b"", tables=None, handler=b"vide", entry=None, data=None, more=b""):
    head = atom(b"tkhd", struct.pack(">IIIIII", 7, 0, 0, number, 0, length), bytes(16), matrix, struct.pack(">II", width << 16 & MOST_32, height << 16 & MOST_32))
    entry = entry or atom(b"jpeg", bytes(6) + b"\0\1" + bytes(16) + struct.pack(">HHIIIH", width & 0xFFFF, height & 0xFFFF, 0x480000, 0x480000, 0, 1) + bytes(32) + b"\0\x18\xff\xff")
    data = data or atom(b"dref", struct.pack(">II", 0, 1), atom(b"url ", b"\0\0\0\1"))
    stbl = atom(b"stbl", atom(b"stsd", struct.pack(">II", 0, 1), entry), tables if tables is not None else good_tables())
    media = atom(b"mdia", atom(b"mdhd", struct.pack(">IIIIII", 0, 0, 0, scale, length, 0)), atom(b"hdlr", bytes(8) + handler + bytes(13)),
                 atom(b"minf", atom(b"vmhd", bytes(12)), atom(b"dinf", data), stbl))
    return atom(b"trak", head, edits, media, more)


def good_tables(times=((25, 24),), sizes=(0, 25), chunks=((1, 25, 1),), offsets=(8,), counts=(None,) * 4):
    def rows(name, layout, values, count, extra=b""):
        return atom(name, bytes(4), extra, struct.pack(">I", len(values) if count is None else count), b"".join(struct.pack(layout, *v) for v in values))

    return b"".join((rows(b"stts", ">II", times, counts[0]), atom(b"stsz", bytes(4), struct.pack(">II", sizes[0] or len(still()), sizes[1] if counts[1] is None else counts[1])),
                     rows(b"stsc", ">III", chunks, counts[2]), rows(b"stco", ">I", [(o,) for o in offsets], counts[3])))


def quick(*tracks, scale=600, length=600, more=b"", first=True):
    data = atom(b"mdat", still() * 25)
    whole = atom(b"moov", atom(b"mvhd", struct.pack(">IIIIIIH", 0, 0, 0, scale, length, 0x10000, 0x100), bytes(10), MATRIX, bytes(24), struct.pack(">I", 2)), *(tracks or (track(),)), more)
    return data + whole if first else whole + data


def edits(*rows, count=None):
    return atom(b"edts", atom(b"elst", struct.pack(">II", 0, len(rows) if count is None else count), b"".join(struct.pack(">IiI", *row) for row in rows)))


def chapter_list(count):
    return atom(b"udta", atom(b"chpl", b"\1\0\0\0\0" + struct.pack(">I", count), b"".join(struct.pack(">QB", n * 7, 1) + b"c" for n in range(count))))


def reference(address):
    return quick(more=atom(b"rmra", atom(b"rmda", atom(b"rdrf", bytes(4) + b"url " + struct.pack(">I", len(address)), address)) * 200))


def quicks():
    listed = atom(b"meta", bytes(4), atom(b"hdlr", bytes(8) + b"mdir" + bytes(13)), atom(b"ilst", atom(b"covr", atom(b"data", struct.pack(">II", 13, 0), bytes(100), size=HALF_32))))
    packed = atom(b"moov", atom(b"cmov", atom(b"dcom", b"zlib"), atom(b"cmvd", struct.pack(">I", MOST_32), bomb(64 << 20))))
    part = atom(b"moof", atom(b"mfhd", bytes(8)), atom(b"traf", atom(b"tfhd", struct.pack(">II", 0x20000, 1)), atom(b"trun", struct.pack(">II", 0x301, MOST_32), bytes(400))))
    index = atom(b"sidx", struct.pack(">IIIII", 0, 1, 0, 0, 0), b"\0\0\xff\xff", struct.pack(">III", HALF_32, 0, 0) * 65535)
    alias = atom(b"dref", struct.pack(">II", 0, 1), atom(b"alis", bytes(4) + noise("alias", 150)))
    to_host = atom(b"dref", struct.pack(">II", 0, 1), atom(b"url ", bytes(4) + b"http://127.0.0.1:9/x\0"))
    raw = atom(b"raw ", bytes(6) + b"\0\1" + bytes(16) + struct.pack(">HHIIIH", 32767, 32767, 0, 0, 0, 1) + bytes(32) + b"\0\x20\xff\xff")
    return [
        ("scale_none.mov", quick(scale=0)), ("media_scale_none.mov", quick(track(scale=0))),
        ("length_most.mov", quick(track(length=MOST_32), length=MOST_32)),
        ("sides_most.mov", quick(track(width=65535, height=65535))),
        ("matrix_none.mov", quick(track(matrix=bytes(36)))), ("matrix_most.mov", quick(track(matrix=b"\x7f\xff\xff\xff" * 9))),
        ("edits_100000.mov", quick(track(edits=edits(*[(1, n % 600, 0x10000) for n in range(100_000)])))),
        ("edits_told.mov", quick(track(edits=edits((1, 0, 0x10000), count=MOST_32)))),
        ("edits_rate_none.mov", quick(track(edits=edits((MOST_32, -(2**31), 0), (MOST_32, 2**31 - 1, MOST_32))))),
        ("entries_told.mov", quick(track(tables=good_tables(counts=(MOST_32, None, None, None))))),
        ("sizes_told.mov", quick(track(tables=good_tables(sizes=(1, 0), counts=(None, MOST_32, None, None))))),
        ("chunks_told.mov", quick(track(tables=good_tables(counts=(None, None, MOST_32, MOST_32))))),
        ("chunks_back.mov", quick(track(tables=good_tables(chunks=((9, 1, 1), (1, MOST_32, 1), (5, 0, 99)))))),
        ("times_none.mov", quick(track(tables=good_tables(times=((25, 0),))))),
        ("times_most.mov", quick(track(tables=good_tables(times=((MOST_32, MOST_32),) * 40)))),
        ("offsets_far.mov", quick(track(tables=good_tables(offsets=(MOST_32,) * 1000)))),
        ("to_a_host.mov", quick(track(data=to_host))), ("alias.mov", quick(track(data=alias))),
        ("refers_to_itself.mov", reference(b"refers_to_itself.mov\0")), ("refers_to_device.qt", reference(b"file:///dev/zero\0")),
        ("packed_head.mov", packed),
        ("packed_in_packed.qt", atom(b"moov", nested(4000, lambda size: struct.pack(">I", size + 8) + b"cmov"))),
        ("atoms_in_atoms.mov", nested(30000, lambda size: struct.pack(">I", size + 8) + b"moov", quick())),
        ("atoms_of_none.mov", atom(b"free", size=0) + quick()), ("atoms_of_one.qt", b"\0\0\0\1moov" * 20000),
        ("wide_atom.mov", atom(b"free", wide=True, size=1 << 63) + quick()),
        ("small_atom.qt", atom(b"free", size=3) * 50000 + quick()),
        ("chapters_100000.mov", quick(more=chapter_list(100_000))), ("cover_2_gb.mov", quick(more=atom(b"udta", listed))),
        ("tracks_3000.mov", quick(*[track(n) for n in range(3000)])), ("tracks_same.qt", quick(*[track(1)] * 400)),
        ("parts_told.mov", quick(more=atom(b"mvex", atom(b"trex", struct.pack(">6I", 0, 1, 1, 0, 0, 0)))) + part * 300),
        ("index_back.qt", atom(b"ftyp", b"qt  ") + index + quick()), ("raw_32767.mov", quick(track(entry=raw))),
        ("sound_lies.qt", quick(track(handler=b"soun", entry=atom(b"in24", bytes(6) + b"\0\1" + struct.pack(">HHIHHHHI", 1, 0, 0, 65535, 65535, 0, 0, MOST_32) + b"\xff" * 40)))),
        ("text_chapters.qt", quick(track(more=atom(b"tref", atom(b"chap", struct.pack(">I", 1) * 50_000))))),
        ("only_head.mov", atom(b"ftyp", b"qt  \0\0\0\0qt  ")),
        ("hole.qt", with_hole(atom(b"ftyp", b"qt  ") + atom(b"mdat", wide=True, size=1 << 61), 1 << 61)),
    ]


def pack(rest=b"", clock=0):
    return b"\0\0\1\xba" + struct.pack(">IH", 0x44000400 | clock & 0xFF, 0x0401) + b"\x01\x89\xc3\xf8" + rest


def stream(content, number=0xE0, size=None):
    return b"\0\0\1" + bytes([number]) + struct.pack(">H", (len(content) + 3 if size is None else size) & 0xFFFF) + b"\x80\0\0" + content


def sequence(width=352, height=288, shape=1, rate=3):
    return b"\0\0\1\xb3" + struct.pack(">I", width << 20 | height << 8 | shape << 4 | rate) + b"\xff\xff\xe0\x18"


def slices(seed, count=200):
    return b"".join(b"\0\0\1" + bytes([1 + n % 0xAF]) + noise(f"{seed}{n}", 40) for n in range(count))


PICTURE = b"\0\0\1\xb8\0\x08\0\x40\0\0\1\0\0\x0f\xff\xf8"


def mpegs():
    changing = b"".join(sequence(16 * (1 + n % 255), 16 * (1 + n * 7 % 255)) + PICTURE + slices(n, 3) for n in range(400))
    cell = lambda pid, start, content: b"\x47" + struct.pack(">H", pid | start << 14) + b"\x10" + content.ljust(184, b"\xff")  # noqa: E731
    programs = b"\0\0\xb0\xff\0\1\xc1\0\0" + b"".join(struct.pack(">HH", n, 0xE000 | n + 16) for n in range(40))
    maps = b"".join(cell(16 + n, 1, b"\0\2\xb0\x12\0\1\xc1\0\0\xe1\0\xf0\0" + b"\x1b\xe1\0\xf0\0") for n in range(3000))
    parameters = b"\0\0\0\1\x67\x42\0\x1e" + noise("sps", 30) + b"\0\0\0\1\x68" + noise("pps", 8)
    return [
        ("sequence_4095.mpg", pack(stream(sequence(4095, 4095) + PICTURE + slices("a")))),
        ("sequence_none.mpg", pack(stream(sequence(0, 0) + PICTURE + slices("b")))),
        ("rate_none.mpeg", pack(stream(sequence(rate=0, shape=0) + PICTURE + slices("c")))),
        ("changing.m1v", changing), ("changing.mpv", changing[::-1] + changing),
        ("slices.m1v", sequence() + PICTURE + slices("d", 3000)), ("starts.m1v", b"\0\0\1\xb3" * 60_000),
        ("zeros.m1v", bytes(400_000)), ("wide.m1v", sequence(4095, 4095) + PICTURE * 200 + slices("e", 20)),
        ("packs.mpg", b"".join(pack(clock=n * 37) for n in range(20_000))),
        ("streams.mpeg", pack(b"".join(stream(noise(n, 50), 0xBD + n % 0x33) for n in range(4000)))),
        ("stream_none.mpg", pack(stream(b"", size=0)) * 5000), ("stream_most.mpeg", pack(stream(b"x" * 40, size=65535)) * 100),
        ("system.mpg", pack(b"\0\0\1\xbb\xff\xff" + b"\xff" * 2000)), ("map.mpeg", pack(b"\0\0\1\xbc\xff\xff" + b"\xff" * 2000)),
        ("ends.mpv", b"\0\0\1\xb9" * 50_000), ("transport.mpg", cell(0, 1, programs) + maps),
        ("transport_noise.mpeg", b"".join(cell(n * 31 & 0x1FFF, n & 1, noise(n, 184)) for n in range(2000))),
        ("parameters.mpg", parameters * 500),
        ("parameters.mpv", b"\0\0\0\1\x40\1" + noise("vps", 40) + b"\0\0\0\1\x42\1" + noise("hevc", 80) + b"\0\0\0\1\x44\1" + noise("ppsh", 20)),
        ("plain.mpv", b"YUV4MPEG2 W99999 H99999 F0:0 Ip A0:0 C444\nFRAME\n" + bytes(4000)),
        ("ivf.mpg", b"DKIF\0\0\x20\0AV01\xff\xff\xff\xff" + little(0, MOST_32, MOST_32, 0) + (little(MOST_32) + bytes(8) + bytes(100)) * 5),
        ("flv.mpeg", b"FLV\1\5\0\0\0\x09\0\0\0\0\x12\xff\xff\xff" + bytes(7) + b"\2\0\x0aonMetaData" + b"\3\0\1a" * 30_000),
        ("flash.mpg", b"CWS\x0a" + little(MOST_32) + bomb(64 << 20)),
        ("mxf.mpeg", bytes.fromhex("060e2b34020501010d01020101020400") + b"\x88" + b"\x7f" + b"\xff" * 7 + noise("mxf", 2000)),
        ("hole.mpg", with_hole(pack(), 1 << 62)), ("hole.m1v", with_hole(sequence(), 1 << 62)),
    ]


def texts():
    """What a movie library takes for lists and scripts."""
    return [
        ("hls.mpg", b"#EXTM3U\n#EXT-X-TARGETDURATION:1\n" + b"#EXTINF:1,\nfile:///dev/zero\n#EXTINF:1,\nhls.mpg\n" * 500),
        ("hls_keys.mov", b"#EXTM3U\n#EXT-X-KEY:METHOD=AES-128,URI=\"http://127.0.0.1:9/k\"\n#EXTINF:1,\nhttp://127.0.0.1:9/a.ts\n"),
        ("edl.avi", b"# mpv EDL v0\nedl.avi\nedl.avi,0,10\n" * 300),
        ("edl_devices.qt", b"# mpv EDL v0\n/dev/zero,0,10\n%9%/dev/tty0\n!new_stream\nav://lavfi:testsrc\n"),
        ("concat.mpeg", b"ffconcat version 1.0\n" + b"file concat.mpeg\nfile /dev/zero\n" * 300),
        ("list.mpv", b"[playlist]\nFile1=file:///dev/zero\nFile2=list.mpv\nNumberOfEntries=99999999\n"),
        ("m3u.m1v", b"#EXTM3U\n" + b"m3u.m1v\n../../../dev/zero\n" * 3000),
        ("description.mpg", b"v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\nm=video 9 RTP/AVP 96\na=rtpmap:96 H264/90000\n"),
        ("dash.mov", b"<?xml version='1.0'?><MPD xmlns='urn:mpeg:dash:schema:mpd:2011' type='dynamic'><Period><AdaptationSet><Representation><BaseURL>http://127.0.0.1:9/</BaseURL></Representation></AdaptationSet></Period></MPD>"),
        ("entities.avi", b"<?xml version='1.0'?><!DOCTYPE a [<!ENTITY a 'x'><!ENTITY b '" + b"&a;" * 900 + b"'>]><a>" + b"&b;" * 900 + b"</a>"),
        ("smil.qt", b"SMILtext<smil><body><video src='file:///dev/zero'/></body></smil>"),
        ("rtsp.mov", b"rtsptextrtsp://127.0.0.1:9/x\r\n"),
        ("subtitles.avi", b"1\n00:00:00,000 --> 99:99:99,999\n<font size=99999999>x</font>\n\n" * 5000),
        ("fonts.mpg", b"[Script Info]\nPlayResX: 0\nPlayResY: -1\n[V4+ Styles]\n[Fonts]\nfontname: ../../x\n" + b"~" * 4000),
        ("meta.mpeg", b";FFMETADATA1\n" + b"[CHAPTER]\nTIMEBASE=0/0\nSTART=0\nEND=9\n" * 20_000),
        ("script.avi", b"import vapoursynth as vs\nopen('made', 'w')\n"), ("device.mov", b"/dev/zero\n"),
    ]


def containers():
    return [*avis(), *quicks()]


def films():
    return [*mpegs(), *texts()]
