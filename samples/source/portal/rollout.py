"""Rollout of a firmware version in waves."""

import hashlib
from dataclasses import dataclass, field
from datetime import datetime, timedelta

WAVES = (0.01, 0.05, 0.25, 1.0)
REST = timedelta(hours=48)
SILENT_AFTER = timedelta(hours=6)
LARGEST_SHARE_GONE_BACK = 0.005


@dataclass
class HomeState:
    consents: bool
    taken_at: datetime | None = None
    heard_at: datetime | None = None
    went_back: bool = False


@dataclass
class Rollout:
    version: str
    homes: dict[str, HomeState]
    wave: int = 0
    wave_started: datetime | None = None
    halted_by: str | None = None
    continued_by: set[str] = field(default_factory=set)

    def place(self, serial: str) -> float:
        """Where a home stands in the queue: from 0 to 1, another place in each rollout."""
        digest = hashlib.sha256(f"{self.version}/{serial}".encode()).digest()
        return int.from_bytes(digest[:8], "big") / 2**64

    def members(self) -> list[str]:
        share = WAVES[self.wave]
        return [s for s, home in self.homes.items() if home.consents and self.place(s) < share]

    def silent(self, now: datetime) -> list[str]:
        def quiet(home: HomeState) -> bool:
            last = max(filter(None, (home.taken_at, home.heard_at)), default=None)
            return home.taken_at is not None and now - last >= SILENT_AFTER

        return [serial for serial in self.members() if quiet(self.homes[serial])]

    def may_go_on(self, now: datetime) -> bool:
        if self.halted_by or self.wave_started is None or now - self.wave_started < REST:
            return False
        members = self.members()
        gone_back = sum(self.homes[s].went_back for s in members)
        return gone_back < LARGEST_SHARE_GONE_BACK * max(len(members), 1) and not self.silent(now)

    def halt(self, person: str) -> None:
        self.halted_by = person
        self.continued_by.clear()

    def agree_to_continue(self, person: str) -> bool:
        """True when the second person has agreed and the rollout goes on."""
        self.continued_by.add(person)
        if len(self.continued_by) < 2:
            return False
        self.halted_by = None
        return True
