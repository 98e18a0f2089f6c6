# SPDX-License-Identifier: GPL-3.0-or-later
"""All of them, by group."""

import dataclasses
import pathlib

from . import discs, movies, others, pictures, places, sequences, sounds, streams, swollen

GROUPS = {"sounds": sounds.files, "streams": streams.files, "sequences": sequences.files, "movies": movies.containers,
          "films": movies.films, "pictures": pictures.files, "discs": discs.files, "places": places.files, "others": others.files,
          "swollen files": swollen.files}


@dataclasses.dataclass(frozen=True)
class Hostile:
    group: str
    name: str
    path: pathlib.Path  # what is opened


def make(folder, group, part=1, of=1):
    """Writes a group's files below a folder, each in one of its own whose name has no dot; every so many of them alone."""
    made = []
    for number, (name, content) in enumerate(GROUPS[group]()):
        if number % of != part % of:
            continue
        place = folder / f"{group.split()[0]}{number:03}"
        place.mkdir()
        path = place / (f"Track{content.number:02}.cda" if group == "discs" else name)
        if callable(content):
            content(path)
        else:
            path.write_bytes(content)
        made.append(Hostile(group, name, path))
    return made
