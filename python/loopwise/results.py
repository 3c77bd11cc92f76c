"""What results have in common."""

from __future__ import annotations

import base64
import html
from typing import TYPE_CHECKING, Any, Callable, Iterable, Sequence, TypeVar

if TYPE_CHECKING:
    import pandas

_Class = TypeVar("_Class", bound=type)


def extends(bound: type) -> Callable[[_Class], _Class]:
    """Class decorator: gives a compiled class what its Python subclass adds, and takes it in place of the
    subclass."""

    def extend(subclass: _Class) -> _Class:
        for name, member in vars(subclass).items():
            if name not in ("__module__", "__doc__", "__dict__", "__weakref__"):
                setattr(bound, name, member)
        bound.__module__ = "loopwise"
        return bound  # type: ignore[return-value]

    return extend


def data_frame(columns: dict[str, Any]) -> pandas.DataFrame:
    """A table of named columns. Raises ImportError where pandas is missing."""
    import pandas

    return pandas.DataFrame(columns)


def html_table(head: Sequence[str], rows: Iterable[Sequence[object]], caption: str) -> str:
    """A table for notebooks."""

    def line(tag: str, cells: Iterable[object]) -> str:
        return "<tr>" + "".join(f"<{tag}>{html.escape(str(cell))}</{tag}>" for cell in cells) + "</tr>"

    body = "".join(line("td", row) for row in rows)
    return f"<table><caption>{html.escape(caption)}</caption>{line('th', head)}{body}</table>"


def svg_image(svg: str | None) -> str:
    """A picture for notebooks; its styles do not reach the page. Empty for None."""
    if svg is None:
        return ""
    data = base64.b64encode(svg.encode()).decode()
    return f'<img style="width: 100%; max-width: 56em" src="data:image/svg+xml;base64,{data}">'


def percent(part: int, whole: int) -> str:
    """A share as "12.5 %"; "-" of nothing."""
    return f"{100 * part / whole:.1f} %" if whole else "-"
