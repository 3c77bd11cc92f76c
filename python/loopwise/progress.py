"""How far the work is, for people."""

from __future__ import annotations

import sys
from typing import Callable, Union

Progress = Union[Callable[[int, int], object], bool, None]


class Bar:
    """A line on stderr that is written again and again."""

    width = 40

    def __call__(self, done: int, planned: int) -> None:
        filled = self.width * done // max(planned, 1)
        end = "\n" if done >= planned else ""
        sys.stderr.write(f"\r[{'#' * filled}{' ' * (self.width - filled)}] {done} of {planned}{end}")
        sys.stderr.flush()


def teller(progress: Progress) -> Callable[[int, int], object] | None:
    """What to call with the steps done and planned, if anything."""
    if progress is None or progress is False:
        return None
    if progress is True:
        return Bar()
    if not callable(progress):
        raise TypeError(f"progress must be True or callable, not {type(progress).__name__}")
    return progress
