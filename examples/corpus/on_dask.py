#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The corpus on a Dask cluster: of workers on this machine, or of one that runs elsewhere and shares the folder. When a worker
dies, others do what it had begun."""

import argparse

import corpus
from distributed import Client, LocalCluster, as_completed

BATCH = 100  # stimuli of a task: some tenths of a second


def make_all(numbers, folder):
    return [corpus.make(number, folder) for number in numbers]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder")
    parser.add_argument("--count", type=int, default=10000, help="how many stimuli (default 10000)")
    where = parser.add_mutually_exclusive_group()
    where.add_argument("--workers", type=int, default=2, help="processes on this machine (default 2)")
    where.add_argument("--scheduler", help="address of a cluster that runs, as tcp://HOST:8786")
    arguments = parser.parse_args()

    # One thread a worker: the noise generator is one for a process.
    cluster = arguments.scheduler or LocalCluster(
        n_workers=arguments.workers, threads_per_worker=1, dashboard_address=None)
    with Client(cluster) as client:
        client.upload_file(corpus.__file__)
        batches = [range(first, min(first + BATCH, arguments.count)) for first in range(0, arguments.count, BATCH)]
        tasks = client.map(make_all, batches, folder=arguments.folder, retries=3)
        rows = []
        for done, (_, made) in enumerate(as_completed(tasks, with_results=True), 1):
            rows += made
            print(f"\r{done} of {len(batches)} batches", end="", flush=True)
        print()
    corpus.write_contents(rows, arguments.folder)


if __name__ == "__main__":
    main()
