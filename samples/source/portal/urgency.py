"""Which fault an installer should look at first."""

from dataclasses import dataclass
from datetime import datetime

URGENCY = {11: 1, 12: 1, 21: 3, 22: 3, 31: 2, 41: 2, 51: 2, 52: 3}
HARD_FROST = -5.0


@dataclass(frozen=True)
class Fault:
    number: int
    home: str
    raised_at: datetime
    outside: float | None


def urgency(fault: Fault) -> int:
    """1 is the most urgent; a fault that nobody has rated is treated as 2."""
    level = URGENCY.get(fault.number, 2)
    if level == 2 and fault.outside is not None and fault.outside < HARD_FROST:
        return 1
    return level


def in_order(faults: list[Fault]) -> list[Fault]:
    return sorted(faults, key=lambda fault: (urgency(fault), fault.raised_at))
