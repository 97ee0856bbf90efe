#!/usr/bin/env python3
"""Writes the sink classes of the HTML engine's events from the table of its interfaces.

Usage: generate_html_events.py TABLE OUTPUT_FOLDER

Writes MSHTMLEvents.h and MSHTMLEvents.cpp. The head of the table tells its format. Events
that a list gives to several classes go into a base class of these. A table that
contradicts itself is refused with the number of the line.
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

# The type of a handler's argument, and what reads it from the call.
TYPES = {
    "text": ("const std::u16string&", "Text"),
    "int": ("std::int32_t", "Integer"),
    "variant": ("const THtmlArgument&", "Value"),
    "object": ("const THtmlHandle<IHTMLEventObj>&", "EventObject"),
}

ROOT = "TMSHTMLEventsBaseSink"
EVENT = re.compile(r"event (\w+)(\.\w+)? ([0-9A-F]{1,8})(?: \((.+)\))?( -> flag)?$")
LIST = re.compile(r"list (\w+): (.+)$")
CLASS = re.compile(
    r"class (\w+) (\{[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\})( with object)?: (.+)$"
)
ARGUMENT = re.compile(r"(\w+): (\w+)$")


class TableError(Exception):
    pass


@dataclass(frozen=True)
class Event:
    name: str
    disp_id: int
    arguments: tuple[tuple[str, str], ...]
    has_result: bool


@dataclass
class Sink:
    """A class of the table, or the base class of several that begin alike."""

    name: str
    identifier: str | None
    base: str
    events: list[Event]


@dataclass
class Table:
    events: dict[str, Event] = field(default_factory=dict)
    lists: dict[str, list[str]] = field(default_factory=dict)
    bases: dict[str, Sink] = field(default_factory=dict)
    classes: dict[str, Sink] = field(default_factory=dict)


def logical_lines(text):
    """Each line with the indented ones below it, and the number of its first."""
    found = []
    for number, raw in enumerate(text.splitlines(), 1):
        line = raw.split("#")[0].rstrip()
        if line.startswith(" ") and found:
            found[-1] = (found[-1][0], f"{found[-1][1]} {line.strip()}")
        elif line:
            found.append((number, line))
    return found


def parse_argument(text):
    match = ARGUMENT.match(text)
    if not match or match[2] not in TYPES:
        raise TableError(f"cannot read the argument '{text}'")
    return match.groups()


def add_event(table, match):
    name, kind, disp_id, arguments, flag = match.groups()
    key = name + (kind or "")
    if key in table.events:
        raise TableError(f"{key} stands twice")
    parsed = tuple(parse_argument(text) for text in arguments.split(", ")) if arguments else ()
    table.events[key] = Event(name, int(disp_id, 16), parsed, bool(flag))


def add_list(table, match):
    name, keys = match[1], match[2].split()
    if name in table.lists:
        raise TableError(f"the list {name} stands twice")
    table.lists[name] = keys
    events_of(table, keys, False)


def events_of(table, keys, with_object):
    events = []
    for key in keys:
        if key not in table.events:
            raise TableError(f"there is no event {key}")
        event = table.events[key]
        if with_object and not event.arguments:
            event = Event(event.name, event.disp_id, (("pEvtObj", "object"),), event.has_result)
        events.append(event)
    return events


def check_distinct(events):
    names, disp_ids = {}, {}
    for event in events:
        if event.name in names or event.disp_id in disp_ids:
            other = names.get(event.name) or disp_ids[event.disp_id]
            raise TableError(f"{event.name} has the name or DISPID of {other.name}")
        names[event.name] = disp_ids[event.disp_id] = event


def base_for(table, name, with_object):
    base = f"T{name}{'Object' if with_object else ''}Events"
    if base not in table.bases:
        table.bases[base] = Sink(base, None, ROOT, events_of(table, table.lists[name], with_object))
    return table.bases[base]


def add_class(table, match):
    name, identifier, with_object, rest = match.groups()
    keys = rest.split()
    if name in table.classes:
        raise TableError(f"{name} stands twice")
    for other in table.classes.values():
        if other.identifier == identifier:
            raise TableError(f"{name} and {other.name} share {identifier}")
    base, shared = ROOT, []
    if keys[0] in table.lists:
        holder = base_for(table, keys.pop(0), bool(with_object))
        base, shared = holder.name, holder.events
    events = events_of(table, keys, bool(with_object))
    check_distinct(shared + events)
    table.classes[name] = Sink(name, identifier, base, events)


def parse(path):
    table = Table()
    for number, line in logical_lines(path.read_text(encoding="utf-8")):
        try:
            for pattern, add in ((EVENT, add_event), (LIST, add_list), (CLASS, add_class)):
                if match := pattern.match(line):
                    add(table, match)
                    break
            else:
                raise TableError(f"cannot read '{line}'")
        except TableError as error:
            raise TableError(f"{path}:{number}: {error}") from None
    if not table.classes:
        raise TableError(f"{path}: there is no class")
    return table


def handler_type(event):
    arguments = ", ".join([f"{ROOT}&"] + [TYPES[kind][0] for _, kind in event.arguments])
    result = "Quorane_TLB::WordBool" if event.has_result else "void"
    return f"std::function<{result}({arguments})>"


def wrapper_arguments(event):
    arguments = [f"{TYPES[kind][0]} {name}" for name, kind in event.arguments]
    return ", ".join(arguments + (["Quorane_TLB::WordBool& result"] if event.has_result else []))


DO_INVOKE = (
    "DoInvoke(std::int32_t dispId, const std::string& iid, std::uint32_t localeId, "
    "std::uint16_t flags,\n                          const TEventArguments& params, "
    "TArgumentPositions positions, THtmlValue* result,\n"
    "                          Ole::TExceptionInfo* exceptionInfo, std::uint32_t* argumentError)"
)
PASSED_ON = "dispId, iid, localeId, flags, params, positions, result, exceptionInfo, argumentError"


def class_header(sink):
    lines = [f"class {sink.name} : public {sink.base} {{", "public:"]
    if sink.identifier:
        lines.append(f"    explicit {sink.name}(TComponent* owner = nullptr, const std::string& name = {{}});")
        lines.append(f"    ~{sink.name}() override;")
        lines.append("    std::string ClassName() const override;")
    lines += [f"    {handler_type(event)} {event.name};" for event in sink.events]
    if sink.events:
        lines.append(f"\n    Ole::HResult {DO_INVOKE} override;\n\nprotected:")
    if not sink.identifier:
        lines.append(f"    {sink.name}(TComponent* owner, const std::string& name);")
    lines += [f"    Ole::HResult Do{e.name}({wrapper_arguments(e)});" for e in sink.events]
    return "\n".join(lines + ["};"])


def case(event):
    reads = [f"arguments.{TYPES[kind][1]}({i})" for i, (_, kind) in enumerate(event.arguments)]
    call = f"Do{event.name}({', '.join(reads + (['answer'] if event.has_result else []))})"
    lines = [f"    case static_cast<std::int32_t>(0x{event.disp_id:08X}):", f"        CheckHandler({call});"]
    if event.has_result:
        lines.append("        PutResult(result, answer);")
    return "\n".join(lines + ["        return Ole::StatusOk;"])


def invoke_source(sink):
    lines = [f"Ole::HResult {sink.name}::{DO_INVOKE} {{"]
    if any(event.arguments for event in sink.events):
        lines.append("    const TSunkArguments arguments(params, positions);")
    if any(event.has_result for event in sink.events):
        lines.append("    auto answer = Quorane_TLB::WordFalse;")
    lines.append("    switch (dispId) {")
    lines += [case(event) for event in sink.events]
    lines += ["    default:", f"        return {sink.base}::DoInvoke({PASSED_ON});", "    }", "}"]
    return "\n".join(lines)


def wrapper_source(sink, event):
    passed = "".join(f", {name}" for name, _ in event.arguments)
    call = f"CallForResult({event.name}, result{passed})" if event.has_result else f"Call({event.name}{passed})"
    return (
        f"Ole::HResult {sink.name}::Do{event.name}({wrapper_arguments(event)}) {{\n"
        f"    return {call};\n}}"
    )


def class_source(sink):
    parts = [
        f"{sink.name}::{sink.name}(TComponent* owner, const std::string& name)\n"
        f"    : {sink.base}(owner, name) {{"
        + (f'\n    FSinkIID = "{sink.identifier}";\n}}' if sink.identifier else "}")
    ]
    if sink.identifier:
        # Here and not only below, so that no event comes when the handlers are gone.
        parts.append(f"{sink.name}::~{sink.name}() {{\n    Disconnect();\n}}")
        parts.append(f'std::string {sink.name}::ClassName() const {{\n    return "{sink.name}";\n}}')
    if sink.events:
        parts.append(invoke_source(sink))
    parts += [wrapper_source(sink, event) for event in sink.events]
    return "\n\n".join(parts)


def sinks_of(table):
    return [*table.bases.values(), *table.classes.values()]


def header(table):
    return "\n\n".join(
        [
            "// A sink class for each event dispatch interface of the HTML engine: one handler for\n"
            "// each of its events, with the engine's name of it. Written by\n"
            "// tools/generate_html_events.py from src/description/ole/MSHTMLEvents.table.\n"
            "#pragma once",
            '#include "description/ole/MSHTMLEventsBaseSink.h"',
            *[class_header(sink) for sink in sinks_of(table)],
        ]
    ) + "\n"


def source(table):
    return "\n\n".join(
        ['#include "description/MSHTMLEvents.h"', *[class_source(sink) for sink in sinks_of(table)]]
    ) + "\n"


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    folder = Path(sys.argv[2])
    try:
        table = parse(Path(sys.argv[1]))
    except TableError as error:
        sys.exit(f"generate_html_events.py: {error}")
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "MSHTMLEvents.h").write_text(header(table), encoding="utf-8")
    (folder / "MSHTMLEvents.cpp").write_text(source(table), encoding="utf-8")


if __name__ == "__main__":
    main()
