"""The extension module: the library's facade, with values as `moxwriter.writer` prepares them."""

from typing import List, Sequence, Tuple, Union

# Texts are bytes. Of attributes and properties, the type in Python says which one the library gets.
_Attributes = Sequence[Tuple[bytes, Union[bytes, bool, int, float]]]
_Properties = Sequence[Tuple[int, Union[bytes, bool, int, float, List[int], List[float]]]]

def version() -> str: ...
def view(values: object) -> Tuple[int, int, int, int, int, int]:
    """What is written of an array.

    Its address, element (0 to 5: float32, float64, int32, uint32, int64, uint64), rows, columns,
    bytes from row to row, bytes from column to column.
    """

class Model:
    def save_to(
        self,
        path: bytes,
        overwrite: bool,
        text1: bytes,
        text2: bytes,
        text3: bytes,
        encoder: int,
        threads: int,
        block_size: int,
        recoverable: int,
    ) -> None: ...
    def add_node(self, type: int, name: bytes, attributes: _Attributes) -> int: ...
    def set_node_data(self, id: int, properties: _Properties, attributes: _Attributes) -> None: ...
    def get_node_id(self, path: bytes, separator: bytes) -> int: ...
    def get_node_id_of_names(self, names: Sequence[bytes]) -> int: ...
    def set_current_node_id(self, id: int) -> None: ...
    def move_to_parent_node(self) -> int: ...
    def add_components(self, paths: Sequence[bytes], separator: bytes) -> List[int]: ...
    def add_components_with_attributes(
        self, paths: Sequence[Tuple[bytes, _Attributes]], separator: bytes
    ) -> List[int]: ...
    def add_array_property(
        self,
        name: Union[bytes, None],
        type: int,
        values: object,
        components: Sequence[int],
        steps: Sequence[Tuple[bytes, _Attributes]],
        attributes: _Attributes,
    ) -> None: ...
    def checkpoint(self) -> bool: ...
    def waited_seconds(self) -> float: ...
    def close(self) -> None: ...
