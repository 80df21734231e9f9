"""Writes and reads tags with mutagen for the cross-check tests.

mutagen_helper.py write FILE VERSION [small]   tag FILE as ID3v2.VERSION (3 or 4) plus ID3v1;
                                               "small": no padding
mutagen_helper.py read FILE            print the tag as JSON
"""
import json
import sys

from mutagen import id3


def write(path, version, small):
    tag = id3.ID3()
    tag.add(id3.TIT2(encoding=0, text="Title One"))
    tag.add(id3.TPE1(encoding=0, text="The Artist"))
    tag.add(id3.TALB(encoding=1, text="Alb"))
    tag.add(id3.COMM(encoding=0, lang="eng", desc="", text="Note"))
    if version == 3:
        tag.add(id3.TYER(encoding=0, text="1999"))
    else:
        tag.add(id3.TDRC(encoding=0, text="1999"))
    # Without padding the tag's synchsafe size reads the same as a plain one.
    tag.save(path, v1=2, v2_version=version, padding=(lambda info: 0) if small else None)


def read(path):
    tag = id3.ID3(path)
    out = {"version": list(tag.version)}
    for key in ("TIT2", "TPE1", "TALB", "TRCK", "TYER", "TDRC"):
        if key in tag:
            out[key] = str(tag[key].text[0])
    print(json.dumps(out))


if __name__ == "__main__":
    if sys.argv[1] == "write":
        write(sys.argv[2], int(sys.argv[3]), len(sys.argv) > 4)
    else:
        read(sys.argv[2])
