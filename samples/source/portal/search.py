"""Search over the homes of one installer."""

import unicodedata
from dataclasses import dataclass


@dataclass(frozen=True)
class Home:
    serial: str
    owner: str
    address: str


def fold(text: str) -> str:
    """Lower case without accents and blanks."""
    decomposed = unicodedata.normalize("NFKD", text.casefold())
    return "".join(c for c in decomposed if not unicodedata.combining(c) and not c.isspace())


def one_letter_apart(word: str, other: str) -> bool:
    if abs(len(word) - len(other)) > 1:
        return False
    shorter, longer = sorted((word, other), key=len)
    for i, letter in enumerate(shorter):
        if letter != longer[i]:
            rest = i if len(shorter) < len(longer) else i + 1
            return shorter[rest:] == longer[i + 1 :]
    return True


def matches(home: Home, query: str) -> bool:
    wanted = fold(query)
    if any(wanted in fold(field) for field in (home.serial, home.owner, home.address)):
        return True
    if len(wanted) < 5:
        return False
    words = (home.owner + " " + home.address).split()
    return any(one_letter_apart(wanted, fold(word)) for word in words)


def search(homes: list[Home], query: str, limit: int = 50) -> list[Home]:
    found = (home for home in homes if matches(home, query))
    return [home for home, _ in zip(found, range(limit))]
