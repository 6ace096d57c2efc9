"""The merge as a tree of steps: groups of profiles first, then results that follow each other,
until one is left. Whatever the order in which steps end, each has its inputs in order."""

from __future__ import annotations

import asyncio
from collections.abc import Awaitable, Callable, Iterator
from dataclasses import dataclass, field
from typing import Any

from .groups import Group
from .problems import LostInputs, Trouble
from .step import Outcome


@dataclass(eq=False)
class Node:
    """A step and what came of it. A result is kept until the step that needs it is done."""

    stage: int
    index: int
    first: int  # the place of its first group among all
    group: Group | None = None
    children: list[Node] = field(default_factory=list)
    parent: Node | None = None
    result: Outcome | None = None
    is_running: bool = False
    is_done: bool = False  # for the first time


@dataclass
class Stage:
    """Nodes that are as many steps away from the profiles."""

    nodes: dict[int, Node] = field(default_factory=dict)
    count: int | None = None  # of all its nodes, once that is known
    fan_in: int | None = None


@dataclass
class Actions:
    """What the tree has done for it."""

    merge: Callable[[Node], Awaitable[Outcome]]  # may raise LostInputs and Trouble
    fan_in: Callable[[int], int]  # for the size of a result
    slots: Callable[[], int]
    drop: Callable[[Outcome], None]  # of a result that is needed no more
    ended: Callable[[Node, Outcome], None]


class MergeTree:
    """Merges groups. run() is called once."""

    def __init__(self, actions: Actions) -> None:
        self._do = actions
        self._stages = [Stage()]
        self._running: dict[asyncio.Task[Outcome], Node] = {}
        self._cutting: asyncio.Task[Group | None] | None = None
        self._ended: asyncio.Queue[Any] = asyncio.Queue()
        self._are_more = True
        self._leaves = 0  # of those that are running
        self._root: Node | None = None
        self._bad_at: int | None = None
        self._trouble: BaseException | None = None

    async def run(self, groups: Iterator[Group]) -> Outcome:
        """The result of all groups. Raises the Trouble of the first one that is bad."""
        try:
            self._cut(groups)
            while self._running or self._cutting is not None:
                task = await self._ended.get()
                if task is self._cutting:
                    self._take_group()
                else:
                    self._take_outcome(task)
                self._cut(groups)
        finally:
            await self._cancel()
        if self._trouble is not None:
            raise self._trouble
        assert self._root is not None and self._root.result is not None
        return self._root.result

    async def _cancel(self) -> None:
        tasks = [*self._running, *([self._cutting] if self._cutting else [])]
        for task in tasks:
            task.cancel()
        await asyncio.gather(*tasks, return_exceptions=True)

    def _cut(self, groups: Iterator[Group]) -> None:
        """Begins to look for the next group, where there is one and room for it."""
        if self._are_more and self._cutting is None and self._has_room():
            # Looking at a thousand files may take its time.
            self._cutting = asyncio.create_task(asyncio.to_thread(_next, groups))
            self._cutting.add_done_callback(self._ended.put_nowait)

    def _has_room(self) -> bool:
        # A step must be waiting wherever one ends; more would fill the memory of the scheduler.
        return self._trouble is None and self._leaves < 2 * self._do.slots()

    def _take_group(self) -> None:
        assert self._cutting is not None
        cutting, self._cutting = self._cutting, None
        stage = self._stages[0]
        try:
            group = cutting.result()
        except Trouble as trouble:
            self._are_more = False
            self._fail(len(stage.nodes), trouble)
            return
        if group is None:
            self._are_more = False
            self._set_count(0, len(stage.nodes))
            return
        node = Node(0, len(stage.nodes), len(stage.nodes), group)
        stage.nodes[node.index] = node
        self._start(node)

    def _start(self, node: Node) -> None:
        if self._bad_at is not None and (node.group is None or node.first >= self._bad_at):
            return
        node.is_running = True
        self._leaves += node.group is not None

        async def merge() -> Outcome:
            return await self._do.merge(node)

        task = asyncio.create_task(merge())
        task.add_done_callback(self._ended.put_nowait)
        self._running[task] = node

    def _take_outcome(self, task: asyncio.Task[Outcome]) -> None:
        node = self._running.pop(task)
        node.is_running = False
        self._leaves -= node.group is not None
        if task.cancelled():
            return
        try:
            node.result = task.result()
        except LostInputs as lost:
            for place in lost.places:
                node.children[place].result = None
            self._need(node)
            return
        except Trouble as trouble:
            self._fail(node.first, trouble)
            return
        self._do.ended(node, node.result)
        for child in node.children:
            self._drop(child)
        if not node.is_done:
            node.is_done = True
            self._join(node)
        if node.parent is not None and node.parent.result is None:
            self._need(node.parent)

    def _drop(self, node: Node) -> None:
        if node.result is not None:
            self._do.drop(node.result)
            node.result = None

    def _need(self, node: Node) -> None:
        """Begins a step, or with what it lacks: results that are lost are made again."""
        if node.is_running:
            return
        lacking = [child for child in node.children if child.result is None]
        for child in lacking:
            self._need(child)
        if not lacking:
            self._start(node)

    def _fail(self, place: int, trouble: BaseException) -> None:
        """Of several that are bad the first one is told, as one machine would. What comes before it
        goes on, what comes after it ends."""
        if self._bad_at is not None and place >= self._bad_at:
            return
        self._bad_at, self._trouble = place, trouble
        for task, node in self._running.items():
            if node.first >= place or node.group is None:
                task.cancel()

    def _set_count(self, number: int, count: int) -> None:
        stage = self._stages[number]
        stage.count = count
        for node in list(stage.nodes.values()):
            if node.is_done:
                self._join(node)

    def _join(self, node: Node) -> None:
        """Makes the step that merges a result with those beside it, when all of them are there."""
        stage = self._stages[node.stage]
        if stage.count == 1:
            self._root = node
            return
        if stage.fan_in is None:
            assert node.result is not None
            stage.fan_in = self._do.fan_in(node.result["size"])
            self._stages.append(Stage())
        above = self._stages[node.stage + 1]
        index = node.index // stage.fan_in
        end = (index + 1) * stage.fan_in
        if stage.count is not None:
            end = min(end, stage.count)
            if above.count is None:
                self._set_count(node.stage + 1, -(-stage.count // stage.fan_in))
        children = [stage.nodes.get(at) for at in range(index * stage.fan_in, end)]
        if index in above.nodes or not all(child and child.is_done for child in children):
            return
        self._make_parent(node.stage + 1, index, [child for child in children if child])

    def _make_parent(self, stage: int, index: int, children: list[Node]) -> None:
        # What is left over at the end goes up as it is.
        if len(children) == 1:
            [node] = children
            node.stage, node.index = stage, index
            self._stages[stage].nodes[index] = node
            self._join(node)
            return
        parent = Node(stage, index, children[0].first, children=children)
        for child in children:
            child.parent = parent
        self._stages[stage].nodes[index] = parent
        self._need(parent)


def _next(groups: Iterator[Group]) -> Group | None:
    return next(groups, None)
