"""What the installed packages of this machine hold and ask for."""

import functools
import pathlib
import re
import subprocess

FORMAT = "${Package}\t${db:Status-Status}\t${Provides}\t${Pre-Depends}, ${Depends}\n"


def alternatives(field):
    """The names in a field of relations: for each relation, those of which one is enough."""
    relations = [relation for relation in field.split(",") if relation.strip()]
    return [[re.match(r"[^\s:(\[]+", name.strip())[0] for name in relation.split("|")]
            for relation in relations]


@functools.cache
def _installed():
    """For every installed package what it depends on; and which packages provide a name."""
    listed = subprocess.run(["dpkg-query", "--show", f"--showformat={FORMAT}"], check=True,
                            capture_output=True, text=True).stdout
    dependencies, providers = {}, {}
    for line in listed.splitlines():
        package, status, provides, depends = line.split("\t")
        if status != "installed":
            continue
        dependencies.setdefault(package, []).extend(alternatives(depends))
        for (name,) in [[package], *alternatives(provides)]:
            providers.setdefault(name, set()).add(package)
    return dependencies, providers


def satisfied(relations):
    """Those of the relations that an installed package satisfies."""
    providers = _installed()[1]
    return [names for names in relations if any(name in providers for name in names)]


def closure(relations):
    """All installed packages that satisfy the relations, and what these depend on.

    Fails where a relation is satisfied by no installed package.
    """
    dependencies, providers = _installed()
    found, waiting = set(), list(relations)
    while waiting:
        names = waiting.pop()
        packages = set().union(*(providers.get(name, set()) for name in names))
        if not packages:
            raise AssertionError(f"No installed package is any of {names}")
        for package in packages - found:
            found.add(package)
            waiting.extend(dependencies[package])
    return found


def owners_of(files):
    """For each file the package that it belongs to, or None."""
    # Packages may name a file by the folder that merging /usr made a link.
    names = {file: _names(file) for file in files}
    asked = sorted({name for both in names.values() for name in both})
    answer = subprocess.run(["dpkg-query", "--search", *asked], check=False, capture_output=True,
                            text=True).stdout
    owners = {}
    for line in answer.splitlines():
        package, _, name = line.rpartition(": ")
        owners[name] = package.split(":")[0]
    return {file: next((owners[name] for name in both if name in owners), None)
            for file, both in names.items()}


def _names(file):
    path = str(pathlib.Path(file).resolve())
    return path, path.removeprefix("/usr")
