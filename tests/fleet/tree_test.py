"""The tree of steps: whatever the order in which they end, and whichever results are lost, each step
has its inputs in order, and the whole is complete."""

import asyncio
import itertools
import random
import unittest

from ptick_fleet.groups import Group
from ptick_fleet.problems import LostInputs, Trouble
from ptick_fleet.tree import Actions, MergeTree


def groups(count):
    for at in range(count):
        name = b"%d" % at
        yield Group(b"", name, name, True, 1, 1, len(name) + 1)


class World:
    """Merges by stringing texts together; steps end in random order."""

    def __init__(self, seed, fan_in=3, slots=2, lost=0.0, bad=()):
        self.random = random.Random(seed)
        self.fan_in = fan_in
        self.slots = slots
        self.lost = lost
        self.bad = bad
        self.steps = []  # (stage, number of inputs) of those that were done
        self.kept = {}  # results that nobody has dropped
        self.most_leaves = self.leaves = 0
        self.names = itertools.count()

    async def merge(self, node):
        self.leaves += node.group is not None
        self.most_leaves = max(self.most_leaves, self.leaves)
        inputs = [child.result["file"] for child in node.children]
        try:
            for _ in range(self.random.randrange(5)):
                await asyncio.sleep(0)
        finally:
            self.leaves -= node.group is not None
        if node.group is not None:
            text = node.group.first.decode() + " "
            if node.index in self.bad:
                raise Trouble(f"{node.index} is bad")
        else:
            lost = [at for at in range(len(inputs)) if self.random.random() < self.lost]
            if lost:
                raise LostInputs(lost)
            text = "".join(self.kept[name] for name in inputs)
        self.steps.append((node.stage, len(inputs)))
        name = str(next(self.names))
        self.kept[name] = text
        return {"file": name, "data": None, "size": len(text)}

    def run(self, count):
        tree = MergeTree(
            Actions(
                merge=self.merge,
                fan_in=lambda size: self.fan_in,
                slots=lambda: self.slots,
                drop=lambda result: self.kept.pop(result["file"]),
                ended=lambda node, result: None,
            )
        )

        async def run():
            result = await tree.run(groups(count))
            left = [task for task in asyncio.all_tasks() if task is not asyncio.current_task()]
            return self.kept[result["file"]], left

        return asyncio.run(run())


class TreeTest(unittest.TestCase):
    def test_everything_is_merged_in_order(self):
        for seed in range(60):
            source = random.Random(seed)
            count, fan_in, slots = (source.randrange(1, most) for most in (70, 6, 9))
            world = World(seed, fan_in + 1, slots, lost=0.1 if seed % 2 else 0.0)
            with self.subTest(seed=seed, count=count, fan_in=fan_in + 1, slots=slots):
                text, left = world.run(count)
                self.assertEqual("".join(f"{at} " for at in range(count)), text)
                self.assertEqual([], left)
                if not world.lost:
                    self.assertLessEqual(world.most_leaves, 2 * slots)
                    self.assertEqual(1, len(world.kept))

    def test_steps_are_those_of_a_tree(self):
        # Of groups and a fan-in: how many steps have how many inputs, by stage.
        rows = [
            (1, 2, {(0, 0): 1}),
            (2, 2, {(0, 0): 2, (1, 2): 1}),
            (9, 3, {(0, 0): 9, (1, 3): 3, (2, 3): 1}),
            # The last result of a stage goes up as it is where it is alone.
            (10, 3, {(0, 0): 10, (1, 3): 3, (2, 3): 1, (3, 2): 1}),
            (5, 16, {(0, 0): 5, (1, 5): 1}),
        ]
        for count, fan_in, want in rows:
            world = World(1, fan_in)
            world.run(count)
            counts = {step: world.steps.count(step) for step in world.steps}
            self.assertEqual(want, counts, (count, fan_in))

    def test_of_several_that_are_bad_the_first_is_told(self):
        for seed in range(30):
            bad = random.Random(seed).sample(range(40), 5)
            with self.subTest(seed=seed), self.assertRaises(Trouble) as raised:
                World(seed, slots=6, bad=bad).run(40)
            self.assertEqual(f"{min(bad)} is bad", raised.exception.reason)

    def test_trouble_with_names_comes_after_that_of_what_is_before(self):
        def broken(count):
            yield from groups(count)
            raise Trouble("the list is broken")

        for bad, want in (((), "the list is broken"), ((1,), "1 is bad")):
            world = World(1, bad=bad)
            tree = MergeTree(
                Actions(world.merge, lambda size: 2, lambda: 2, lambda result: None,
                        lambda node, result: None)
            )  # fmt: skip
            with self.assertRaises(Trouble) as raised:
                asyncio.run(tree.run(broken(3)))
            self.assertEqual(want, raised.exception.reason)


if __name__ == "__main__":
    unittest.main()
