"""The model of docs/scale.md: its formula agrees with the simulation of the schedule, the simulation
with what the tree does, and the tables are those of the script."""

import importlib.machinery
import importlib.util
import os
import sys
import unittest
from dataclasses import replace

from fleet.tree_test import World
from support.documents import read
from support.program import SOURCE_DIR


def load():
    path = os.path.join(SOURCE_DIR, "bench", "fleet_model")
    loader = importlib.machinery.SourceFileLoader("fleet_model", path)
    spec = importlib.util.spec_from_loader("fleet_model", loader)
    module = importlib.util.module_from_spec(spec)
    sys.modules["fleet_model"] = module
    spec.loader.exec_module(module)
    return module


MODEL = load()
CONSTANTS = MODEL.Constants()


class ModelTest(unittest.TestCase):
    def test_the_formula_agrees_with_the_simulation(self):
        for changes in (
            {}, {"through_engine": True}, {"group": 1000}, {"group": 1000, "through_engine": True},
            {"storage": 1000.0},
        ):  # fmt: skip
            c = replace(CONSTANTS, **changes)
            for profiles in MODEL.PROFILES:
                for workers in MODEL.WORKERS:
                    simulated = MODEL.Simulation(c, profiles, workers).run()
                    formula = MODEL.model(c, profiles, workers)
                    with self.subTest(changes=changes, profiles=profiles, workers=workers):
                        self.assertLess(abs(formula / simulated - 1), 0.2)

    def test_the_simulation_has_the_steps_of_the_tree(self):
        c = replace(CONSTANTS, group=1, fan_in=3)
        for count in (1, 2, 9, 10, 40):
            world = World(1, fan_in=3)
            world.run(count)
            simulation = MODEL.Simulation(c, count, 4)
            worked = []
            simulation.on_worked = lambda step: (
                worked.append((step[0], simulation.inputs(step))),
                MODEL.Simulation.on_worked(simulation, step),
            )
            simulation.run()
            self.assertEqual(sorted(world.steps), sorted(worked), count)

    def test_a_merge_of_one_group_takes_its_steps(self):
        c = replace(CONSTANTS, group=10)
        want = c.begin + 10 * c.look + c.client_step + MODEL.leaf_seconds(c, 1)
        self.assertAlmostEqual(want, MODEL.Simulation(c, 10, 5).run())

    def test_more_workers_take_no_longer(self):
        for profiles in MODEL.PROFILES:
            times = [MODEL.Simulation(CONSTANTS, profiles, each).run() for each in MODEL.WORKERS]
            for before, after in zip(times, times[1:]):
                self.assertLess(after, before * 1.01)

    def test_the_tables_are_those_of_the_script(self):
        text = read("docs", "scale.md")
        for through_engine in (False, True):
            lines = "\n".join(MODEL.table(replace(CONSTANTS, through_engine=through_engine)))
            self.assertIn("\n" + lines + "\n", text)


if __name__ == "__main__":
    unittest.main()
