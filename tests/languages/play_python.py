"""Plays sequences through the package for Python. README.md describes them, and the log."""

from __future__ import annotations

import os
import struct
import sys
from typing import Any, Callable, Dict, Iterator, List, Mapping, Optional, Tuple

import numpy as np

import moxwriter
from moxwriter import Model

Words = Iterator[str]
Attributes = Dict[bytes, Any]


def text(word: str) -> bytes:
    return bytes.fromhex(word[1:])


def optional_text(word: str) -> Optional[bytes]:
    return None if word == "-" else text(word)


def float32(word: str) -> np.float32:
    (value,) = struct.unpack(">f", bytes.fromhex(word))
    return np.float32(value)


def float64(word: str) -> float:
    (value,) = struct.unpack(">d", bytes.fromhex(word))
    return float(value)


ATTRIBUTES: Mapping[str, Callable[[str], Any]] = {
    "float": float32,
    "double": float64,
    "int": int,
    "unsigned": int,
    "long": int,
    "string": text,
}
PROPERTIES: Mapping[str, Callable[[str], Any]] = {
    "float": float32,
    "double": float64,
    "int": lambda word: np.int32(int(word)),
    "bool": lambda word: word != "0",
    "string": text,
}


def several(words: Words, read: Callable[[str], Any]) -> List[Any]:
    return [read(next(words)) for _ in range(int(next(words)))]


def read_attributes(words: Words) -> Attributes:
    return {
        text(next(words)): ATTRIBUTES[next(words)](next(words)) for _ in range(int(next(words)))
    }


def read_property(words: Words) -> Any:
    form = next(words)
    if form == "floats":
        return np.array(several(words, float32), dtype=np.float32)
    if form == "ints":
        return np.array(several(words, int), dtype=np.int32)
    return PROPERTIES[form](next(words))


def read_properties(words: Words) -> Dict[int, Any]:
    return {int(next(words)): read_property(words) for _ in range(int(next(words)))}


def read_steps(words: Words) -> List[Tuple[bytes, Attributes]]:
    return [(text(next(words)), read_attributes(words)) for _ in range(int(next(words)))]


def read_options(words: Words) -> Dict[str, Any]:
    overwrite = next(words) != "0"
    texts = {name: text(next(words)) for name in ("text1", "text2", "text3")}
    numbers = {name: int(next(words)) for name in ("threads", "block_size")}
    return {"overwrite": overwrite, **texts, **numbers}


def read_array(words: Words) -> np.ndarray[Any, Any]:
    element = np.dtype(next(words))
    rows, columns, row_stride, column_stride, offset = (int(next(words)) for _ in range(5))
    return np.ndarray(
        (rows, columns),
        element,
        buffer=text(next(words)),
        offset=offset,
        strides=(row_stride, column_stride),
    )


def values_of(result: object) -> List[int]:
    """What the log has of what a call returned."""
    if isinstance(result, list):
        return [len(result), *result]
    return [result] if isinstance(result, int) else []


def escaped(sentence: str) -> str:
    raw = sentence.encode("utf-8", "surrogateescape")
    return "".join(
        chr(byte) if 0x20 <= byte <= 0x7E and byte != 0x5C else "\\x%02x" % byte for byte in raw
    )


class Player:
    """One sequence."""

    _READERS: Mapping[str, Callable[[Words], Any]] = {
        "options": read_options,
        "attributes": read_attributes,
        "properties": read_properties,
        "steps": read_steps,
        "array": read_array,
    }

    def __init__(self, sequence: str) -> None:
        self._sequence = sequence
        self._calls = 0
        self._models: Dict[str, Model] = {}
        self._said: Dict[str, Any] = {
            "options": {},
            "attributes": {},
            "properties": {},
            "steps": [],
            "array": np.zeros((0, 1), dtype=np.float32),
        }

    def prepare(self, what: str, words: Words) -> None:
        self._said[what] = self._READERS[what](words)

    def call(self, number: str, words: Words) -> str:
        """The line of the log."""
        self._calls += 1
        call = next(words)
        logged = [self._sequence, str(self._calls), number, call]
        try:
            result = getattr(self, "_" + call)(number, words)
            return " ".join(logged + ["0", *map(str, values_of(result))])
        except moxwriter.WritingError as failure:
            return " ".join(logged + [str(failure.code), escaped(str(failure))])

    def _given(self, what: str, words: Words, otherwise: Any) -> Any:
        return self._said[what] if next(words) == "given" else otherwise

    def _new(self, number: str, words: Words) -> None:
        self._models[number] = Model()

    def _save_to(self, number: str, words: Words) -> None:
        path = os.fsdecode(text(next(words)))
        self._models[number].save_to(path, **self._given("options", words, {}))

    # Paths of Python are those of the system: it has no others.
    _save_to_wide = _save_to

    def _add_node(self, number: str, words: Words) -> int:
        type, name = int(next(words)), text(next(words))
        return self._models[number].add_node(type, name, self._given("attributes", words, {}))

    def _set_node_data(self, number: str, words: Words) -> None:
        id = int(next(words))
        properties = self._given("properties", words, {})
        attributes = self._given("attributes", words, {})
        self._models[number].set_node_data(id, properties, attributes)

    def _get_node_id(self, number: str, words: Words) -> int:
        path, separator = text(next(words)), optional_text(next(words))
        if separator is None:
            return self._models[number].get_node_id(path)
        return self._models[number].get_node_id(path, separator)

    def _get_node_id_by_names(self, number: str, words: Words) -> int:
        return self._models[number].get_node_id(several(words, text))

    def _set_current_node_id(self, number: str, words: Words) -> None:
        self._models[number].set_current_node_id(int(next(words)))

    def _move_to_parent_node(self, number: str, words: Words) -> int:
        return self._models[number].move_to_parent_node()

    def _add_components(self, number: str, words: Words) -> List[int]:
        separator = optional_text(next(words))
        return self._add_paths(number, several(words, text), separator)

    def _add_component_map(self, number: str, words: Words) -> List[int]:
        separator = optional_text(next(words))
        paths = {path: self._said["attributes"] for path in several(words, text)}
        return self._add_paths(number, paths, separator)

    def _add_paths(self, number: str, paths: Any, separator: Optional[bytes]) -> List[int]:
        if separator is None:
            return self._models[number].add_assembly_components(paths)
        return self._models[number].add_assembly_components(paths, separator)

    def _add_array(self, number: str, words: Words) -> None:
        name, type = optional_text(next(words)), int(next(words))
        steps = self._given("steps", words, None)
        attributes = self._given("attributes", words, {})
        ids = several(words, int)
        values = self._said["array"]
        self._models[number].add_array_property(type, values, ids, steps, attributes, name=name)

    def _close(self, number: str, words: Words) -> None:
        self._models[number].close()

    def _destroy(self, number: str, words: Words) -> None:
        # What fails when nobody refers to a model any more is only printed.
        self._models.pop(number).close()


def main() -> None:
    player = Player("")
    with open(sys.argv[1], encoding="ascii") as sequences:
        for line in sequences:
            words = iter(line.rstrip("\n").split(" "))
            first = next(words)
            if first == "sequence":
                player = Player(next(words))
            elif first.isdigit():
                print(player.call(first, words))
            else:
                player.prepare(first, words)


if __name__ == "__main__":
    main()
