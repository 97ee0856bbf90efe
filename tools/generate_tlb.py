#!/usr/bin/env python3
"""Writes the C++ binding of the client SDK from the description of its type library.

Usage: generate_tlb.py DESCRIPTION OUTPUT_FOLDER

Writes Quorane_TLB.h (interfaces, identifiers, creators), Quorane_TLB.cpp (the calls by
name, the table of interfaces), Quorane_TLB_Components.h (the component classes) and
Quorane_TLB_Mock.h (a mock of each interface, for tests). A description that contradicts itself is refused with
the number of the line.
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

PLAIN_TYPES = {
    "text": "std::u16string",
    "flag": "WordBool",
    "int": "std::int32_t",
    "date": "double",
    "float": "float",
    "variant": "Variant",
    "dispatch": "Handle<IDispatch>",
    "unknown": "Handle<IUnknown>",
}
PASSED_BY_VALUE = {"flag", "int", "date", "float"}

LIBRARY = re.compile(r"library (\w+) \{([0-9A-F-]{36})\} version (\d+)\.(\d+)$")
INTERFACE = re.compile(r"interface (\w+)(?: : (\w+))? \{([0-9A-F-]+)\}(?: (no class)| class (\w+))?( component)?$")
OPERATION = re.compile(r"(\w+)\((.*)\)(?: -> (\w+)(\?)?(?: of (\w+))?)?$")
ARGUMENT = re.compile(r"(out )?(\w+): (\w+)(?: of (\w+))?$")


class DescriptionError(Exception):
    pass


@dataclass
class Argument:
    name: str
    type: str
    out: bool
    element: str | None


@dataclass
class Operation:
    name: str
    arguments: list[Argument]
    result: str | None
    may_be_empty: bool
    element: str | None


@dataclass
class Interface:
    name: str
    parent: str | None
    identifier: str
    class_name: str | None
    has_component: bool
    operations: list[Operation] = field(default_factory=list)


@dataclass
class Library:
    name: str
    identifier: str
    version: tuple[int, int]
    interfaces: dict[str, Interface] = field(default_factory=dict)

    def chain(self, interface):
        """The interface's parents, nearest first."""
        while interface.parent:
            interface = self.interfaces[interface.parent]
            yield interface

    def inherited(self, interface):
        """The names of the operations that the interface repeats, each with its parent."""
        above = {op.name: parent.name for parent in self.chain(interface) for op in parent.operations}
        return {op.name: above[op.name] for op in interface.operations if op.name in above}

    def repeated_below(self, interface):
        """The names of the interface's operations that one derived from it repeats."""
        below = [self.inherited(other) for other in self.interfaces.values()]
        names = (name for found in below for name, parent in found.items() if parent == interface.name)
        return list(dict.fromkeys(names))

    def is_type(self, name):
        return name in PLAIN_TYPES or name in self.interfaces


def next_identifier(identifier):
    return f"{int(identifier[:8], 16) + 1:08X}{identifier[8:]}"


def parse_argument(text):
    match = ARGUMENT.match(text)
    if not match:
        raise DescriptionError(f"cannot read the argument '{text}'")
    out, name, type_name, element = match.groups()
    return Argument(name, type_name, bool(out), element)


def parse_operation(line):
    match = OPERATION.match(line)
    if not match:
        raise DescriptionError(f"cannot read the operation '{line}'")
    name, arguments, result, empty, element = match.groups()
    parsed = [parse_argument(text) for text in arguments.split(", ") if text]
    return Operation(name, parsed, result, bool(empty), element)


def parse_interface(line, library):
    match = INTERFACE.match(line)
    if not match:
        raise DescriptionError(f"cannot read the interface '{line}'")
    name, parent, identifier, without_class, class_name, component = match.groups()
    if name in library.interfaces:
        raise DescriptionError(f"{name} stands twice")
    if parent and parent not in library.interfaces:
        raise DescriptionError(f"{name} stands before its parent {parent}")
    if len(identifier) == 8:
        identifier += library.identifier[8:]
    if without_class:
        class_name = None
    elif not class_name:
        class_name = name[1:]
    return Interface(name, parent, identifier, class_name, bool(component))


def parse(path):
    library = None
    current = None
    for number, raw in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        line = raw.split("#")[0].strip()
        try:
            if not line:
                continue
            if match := LIBRARY.match(line):
                library = Library(match[1], match[2], (int(match[3]), int(match[4])))
            elif not library:
                raise DescriptionError("the library line must come first")
            elif line.startswith("interface "):
                current = parse_interface(line, library)
                library.interfaces[current.name] = current
            elif not current:
                raise DescriptionError("an operation stands before the first interface")
            else:
                current.operations.append(parse_operation(line))
        except DescriptionError as error:
            raise DescriptionError(f"{path}:{number}: {error}") from None
    if not library:
        raise DescriptionError(f"{path}: there is no library line")
    check(library)
    return library


def check(library):
    """What only shows when everything is read: unknown types, identifiers used twice."""
    seen = {library.identifier: library.name}
    for interface in library.interfaces.values():
        for identifier in (interface.identifier, next_identifier(interface.identifier)):
            if identifier in seen:
                raise DescriptionError(f"{interface.name} and {seen[identifier]} share {identifier}")
            seen[identifier] = interface.name
        for operation in interface.operations:
            used = [argument.type for argument in operation.arguments]
            used += [operation.result] if operation.result else []
            for type_name in used:
                if not library.is_type(type_name):
                    raise DescriptionError(f"{interface.name}.{operation.name} uses {type_name}")


def guid(identifier):
    first, second, third, fourth, fifth = identifier.split("-")
    tail = ", ".join(f"0x{(fourth + fifth)[i:i + 2]}" for i in range(0, 16, 2))
    return f"{{0x{first}, 0x{second}, 0x{third}, {{{tail}}}}}"


def cpp_type(type_name):
    return PLAIN_TYPES.get(type_name) or f"Handle<{type_name}>"


def cpp_argument(argument):
    if argument.out:
        return f"{cpp_type(argument.type)}& {argument.name}"
    if argument.type in PASSED_BY_VALUE:
        return f"{cpp_type(argument.type)} {argument.name}"
    return f"const {cpp_type(argument.type)}& {argument.name}"


def declaration(operation):
    result = cpp_type(operation.result) if operation.result else "void"
    arguments = ", ".join(cpp_argument(argument) for argument in operation.arguments)
    notes = []
    if operation.may_be_empty:
        notes.append("may be empty")
    elements = [x for x in [operation.element] + [a.element for a in operation.arguments] if x]
    notes += [f"holds {element}" for element in elements]
    comment = f" // {', '.join(notes)}" if notes else ""
    return f"    virtual {result} {operation.name}({arguments}) = 0;{comment}"


def interface_header(library, interface):
    base = interface.parent or "IDispatch"
    lines = [f"class {interface.name} : public {base} {{", "public:"]
    lines.append(f"    static constexpr Guid IID{guid(interface.identifier)};")
    if interface.class_name:
        lines.append(f"    static constexpr Guid ClassID{guid(next_identifier(interface.identifier))};")
    lines += [f"    using {parent}::{name};" for name, parent in library.inherited(interface).items()]
    lines += [declaration(operation) for operation in interface.operations]
    lines.append("    Variant Invoke(std::string_view name, InvokeKind kind, std::span<Variant> arguments) override;")
    lines.append("};")
    return "\n".join(lines)


def creator_header(interface):
    name = interface.class_name
    return (
        f"inline constexpr Guid CLASS_{name} = {interface.name}::ClassID;\n"
        f"using Co{name} = TCreator<{interface.name}>;"
    )


def named(operation):
    """The name and kind under which a call by name reaches the operation."""
    for prefix, kind in (("Get_", "PropertyGet"), ("Set_", "PropertyPut")):
        if operation.name.startswith(prefix):
            return operation.name[len(prefix):], kind
    return operation.name, "Method"


def call_by_name(interface, operation):
    name, kind = named(operation)
    outs = [(i, a) for i, a in enumerate(operation.arguments) if a.out]
    passed = [
        a.name if a.out else f"FromVariant<{cpp_type(a.type)}>(values[{i}])"
        for i, a in enumerate(operation.arguments)
    ]
    call = f"self.{operation.name}({', '.join(passed)})"
    body = [f"{cpp_type(a.type)} {a.name}{{}};" for _, a in outs]
    body.append(f"Variant result = ToVariant({call});" if operation.result else f"{call};")
    body += [f"values[{i}] = ToVariant({a.name});" for i, a in outs]
    body.append("return result;" if operation.result else "return Variant();")
    if operation.result and not outs:
        body = [f"return ToVariant({call});"]
    values = " values" if operation.arguments else ""
    return (
        f'        {{"{name}", InvokeKind::{kind}, {len(operation.arguments)},\n'
        f"         []({interface.name}& self, std::span<Variant>{values}) -> Variant {{ "
        f"{' '.join(body)} }}}},"
    )


def interface_source(interface):
    base = interface.parent or "IDispatch"
    signature = (
        f"Variant {interface.name}::Invoke(std::string_view name, InvokeKind kind, "
        "std::span<Variant> arguments) {"
    )
    if not interface.operations:
        return f"{signature}\n    return {base}::Invoke(name, kind, arguments);\n}}"
    rows = "\n".join(call_by_name(interface, operation) for operation in interface.operations)
    return (
        f"{signature}\n"
        f"    static constexpr TNamedOperation<{interface.name}> operations[] = {{\n{rows}\n    }};\n"
        f"    if (const auto* found = FindNamed<{interface.name}>(operations, name, kind, arguments.size()))\n"
        f"        return found->Call(*this, arguments);\n"
        f"    return {base}::Invoke(name, kind, arguments);\n}}"
    )


def table_row(interface):
    parent = interface.parent or ""
    class_id = f"{interface.name}::ClassID" if interface.class_name else "Guid{}"
    return (
        f'        {{"{interface.name}", "{parent}", {interface.name}::IID, '
        f'"{interface.class_name or ""}", {class_id}}},'
    )


def interface_table(library):
    rows = "\n".join(table_row(interface) for interface in library.interfaces.values())
    return (
        "std::span<const TInterfaceEntry> InterfaceTable() {\n"
        f"    static constexpr TInterfaceEntry table[] = {{\n{rows}\n    }};\n"
        "    return table;\n}"
    )


def mock_method(operation):
    result = cpp_type(operation.result) if operation.result else "void"
    arguments = ", ".join(cpp_argument(argument) for argument in operation.arguments)
    return f"    MOCK_METHOD({result}, {operation.name}, ({arguments}), (override));"


def mock(library, interface):
    name = f"TMockOf{interface.name}"
    base = f"TMockOf{interface.parent}<Interface>" if interface.parent else "Interface"
    lines = ["template<class Interface>", f"class {name} : public {base} {{", "public:"]
    lines += [f"    using {base}::{hidden};" for hidden in library.repeated_below(interface)]
    for hidden in library.inherited(interface):
        lines.append(f"    using {base}::{hidden};")
        lines.append(f"    using {base}::gmock_{hidden};")
    lines += [mock_method(operation) for operation in interface.operations]
    lines += ["};", f"using TMock{interface.name[1:]} = {name}<{interface.name}>;"]
    return "\n".join(lines)


def mock_header(library):
    return "\n\n".join(
        [
            "// A mock of each interface of the binding, parents included: TMockRequirement\n"
            "// stands in for IRequirement. A call by name arrives at the mocked operation.\n"
            "#pragma once",
            "#include <gmock/gmock.h>",
            '#include "server/Quorane_TLB.h"',
            "namespace Quorane_TLB {",
            "\n\n".join(mock(library, i) for i in library.interfaces.values()),
            "} // namespace Quorane_TLB\n",
        ]
    )


def component_member(operation):
    result = cpp_type(operation.result) if operation.result else "void"
    arguments = ", ".join(cpp_argument(argument) for argument in operation.arguments)
    passed = ", ".join(argument.name for argument in operation.arguments)
    # A property with a variant index has no typed way through a component.
    if named(operation)[1] == "PropertyGet" and operation.arguments:
        call = f'GetByName(GetDefaultInterface(), "{named(operation)[0]}", {{{passed}}})'
    else:
        call = f"GetDefaultInterface()->{operation.name}({passed})"
    return f"    {result} {operation.name}({arguments}) {{ {'return ' if operation.result else ''}{call}; }}"


def component(library, interface):
    parents = list(library.chain(interface))[::-1]
    operations = [op for holder in parents + [interface] for op in holder.operations]
    lines = [f"class T{interface.class_name} : public TServerComponent<{interface.name}> {{", "public:"]
    lines += [component_member(operation) for operation in operations]
    return "\n".join(lines + ["};"])


def components_header(library):
    interfaces = library.interfaces.values()
    return "\n\n".join(
        [
            "// A component for each factory and statics of the binding, and for its collections\n"
            "// and its start, by which a form can hold an SDK object; and the dispatch twin of\n"
            "// each interface. Generated with Quorane_TLB.h.\n"
            "#pragma once",
            '#include "server/Quorane_TLB.h"\n#include "server/tlb/ServerComponent.h"',
            "namespace Quorane_TLB {",
            "\n\n".join(component(library, i) for i in interfaces if i.has_component),
            "// Every interface can be called by name, so each is its own twin.\n"
            + "\n".join(f"using {i.name}Disp = {i.name};" for i in interfaces),
            "} // namespace Quorane_TLB\n",
        ]
    )


def header(library):
    interfaces = list(library.interfaces.values())
    creators = [creator_header(i) for i in interfaces if i.class_name]
    return "\n\n".join(
        [
            "// The binding of the requirements client SDK: its interfaces along their chain of\n"
            "// parents, their identifiers, and a creator for each class. Written by\n"
            "// tools/generate_tlb.py from src/server/tlb/Quorane_TLB.types.\n"
            "//\n"
            "// Every operation raises EOleSysError when the SDK or the server refuses it.\n"
            "#pragma once",
            '#include "server/tlb/Creator.h"\n#include "server/tlb/Dispatch.h"',
            "namespace Quorane_TLB {",
            f"inline constexpr Guid LIBID_{library.name}{guid(library.identifier)};\n"
            f"inline constexpr int {library.name}MajorVersion = {library.version[0]};\n"
            f"inline constexpr int {library.name}MinorVersion = {library.version[1]};",
            "\n".join(f"class {i.name};" for i in interfaces),
            "\n\n".join(interface_header(library, i) for i in interfaces),
            "// Both functions of a creator raise EOleSysError when the class cannot be started\n"
            "// (\"Class not registered\") or lacks the interface (\"Interface not supported\").\n"
            + "\n".join(creators),
            "} // namespace Quorane_TLB\n",
        ]
    )


def source(library):
    return "\n\n".join(
        [
            '#include "server/Quorane_TLB.h"\n#include "server/tlb/InterfaceTable.h"\n'
            '#include "server/tlb/NamedCalls.h"',
            "namespace Quorane_TLB {",
            "\n\n".join(interface_source(i) for i in library.interfaces.values()),
            interface_table(library),
            "} // namespace Quorane_TLB\n",
        ]
    )


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    folder = Path(sys.argv[2])
    try:
        library = parse(Path(sys.argv[1]))
    except DescriptionError as error:
        sys.exit(f"generate_tlb.py: {error}")
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "Quorane_TLB.h").write_text(header(library), encoding="utf-8")
    (folder / "Quorane_TLB.cpp").write_text(source(library), encoding="utf-8")
    (folder / "Quorane_TLB_Components.h").write_text(components_header(library), encoding="utf-8")
    (folder / "Quorane_TLB_Mock.h").write_text(mock_header(library), encoding="utf-8")


if __name__ == "__main__":
    main()
