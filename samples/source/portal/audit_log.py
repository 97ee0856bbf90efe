"""Log of who did what, in which a changed or missing entry is found."""

import hashlib
import json
from dataclasses import dataclass


@dataclass(frozen=True)
class Entry:
    person: str
    time: str
    home: str
    purpose: str
    before: str

    def checksum(self) -> str:
        content = json.dumps([self.person, self.time, self.home, self.purpose, self.before])
        return hashlib.sha256(content.encode()).hexdigest()


def append(log: list[Entry], person: str, time: str, home: str, purpose: str) -> None:
    before = log[-1].checksum() if log else ""
    log.append(Entry(person, time, home, purpose, before))


def first_broken(log: list[Entry]) -> int | None:
    """Index of the first entry that doesn't follow from the one before it."""
    before = ""
    for index, entry in enumerate(log):
        if entry.before != before:
            return index
        before = entry.checksum()
    return None
