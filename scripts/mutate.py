"""The engine of scripts/mutate.sh, which tells how it is used."""

import argparse
import collections
import concurrent.futures
import dataclasses
import json
import os
import pathlib
import queue
import re
import resource
import shutil
import subprocess
import threading
import time
import zlib

ROOT = pathlib.Path.cwd()
WORK = ROOT / "build/mutate"
TREE = WORK / "tree"
BUILD = WORK / "build"
EQUIVALENT = ROOT / "scripts/mutate-equivalent.txt"
WANTED = 95  # percent


# ---- Faults ----------------------------------------------------------------------------------------------------------


@dataclasses.dataclass
class Mutant:
    file: str
    line: int
    kind: str
    text: str  # of the whole file
    old: str  # the lines concerned, with white space collapsed
    new: str
    outcome: str = ""
    failures: list = dataclasses.field(default_factory=list)

    def key(self):
        return (self.file, self.old, self.new)

    def __str__(self):
        return f"{self.file}\n- {self.old}\n+ {self.new}\n"


def mask(text):
    """Blanks comments and preprocessor lines and the inside of literals, so that every place stays where it is."""

    def blank(match):
        token = match.group()
        if token[0] in "\"'":
            return token[0] + "$" * (len(token) - 2) + token[0]
        return re.sub(r"[^\n]", " ", token)

    tokens = r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])*'|^[ \t]*#(?:\\\n|[^\n])*"
    return re.sub(tokens, blank, text, flags=re.S | re.M)


def closing(code, start):
    """Returns the place of the bracket that closes the one at start."""
    depth = 0
    for place in range(start, len(code)):
        depth += (code[place] in "([{") - (code[place] in ")]}")
        if depth == 0:
            return place
    return -1


def arguments(code, start, end):
    """Returns the places of the arguments between the brackets at start and end."""
    places, depth, first = [], 0, start + 1
    for place in range(start + 1, end + 1):
        depth += (code[place] in "([{") - (code[place] in ")]}")
        if (code[place] == "," and depth == 0) or place == end:
            blanks = len(code[first:place]) - len(code[first:place].lstrip())
            places.append((first + blanks, place))
            first = place + 1
    return places


def boundaries(text, code):
    other = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "+": "-", "-": "+", "+=": "-=", "-=": "+="}
    for match in re.finditer(r"(?<= )(<=?|>=?|[+-]=?)(?= )", code):
        if not code[: match.start()].endswith("template "):
            yield *match.span(), other[match.group()]
    for match in re.finditer(r"\+\+|--", code):
        yield *match.span(), "--" if match.group() == "++" else "++"


def conditions(text, code):
    other = {"==": "!=", "!=": "==", "&&": "||", "||": "&&"}
    for match in re.finditer(r"(?<= )(==|!=|&&|\|\|)(?= )", code):
        yield *match.span(), other[match.group()]
    for match in re.finditer(r"(?<![\w)])!(?=[\w(:*])", code):
        yield *match.span(), ""
    for match in re.finditer(r" \? ", code):
        if not re.search(r" (==|!=|[<>]=?) \S+$", code[: match.start()]):
            yield *match.span(), " == 0 ? "
    for match in re.finditer(r"\b(?:if|while) (?:constexpr )?\(", code):
        start, end = match.end(), closing(code, match.end() - 1)
        start += code[start:end].rfind("; ") + 2 if "; " in code[start:end] else 0
        if not re.search(r"==|!=|&&|\|\||^!|^const |^auto ", code[start:end]):
            yield start, end, f"!({text[start:end]})"


def statements(text, code):
    call = r"(Q_EMIT )?(::)?(\w+(<[^()]*>)?(\([^()]*\))?(\.|->|::))*[a-z]\w*\(.*\)"
    emission = r"Q_EMIT \w+\(.*\)"
    assignment = r"\*?[\w.:>()\[\]-]+(\+\+)? [-+*/|&^]?= .+|(\+\+|--)\w+|\w+(\+\+|--)"
    jump = r"return|break|continue"
    keywords = r"(return|static_assert|using|case|throw|if|for|while|switch|sizeof)\b."
    for match in re.finditer(r"[^;{}]*;", code):
        start = match.start() + len(match.group()) - len(match.group().lstrip())
        label = re.match(r"(case [\w:]+|default):\s+", code[start : match.end()])
        start += label.end() if label else 0
        statement = code[start : match.end() - 1]
        wanted = f"{call}|{emission}|{assignment}|{jump}"
        if not re.match(keywords, statement) and re.fullmatch(wanted, statement, re.S):
            yield start, match.end() - 1, ""


def swaps(text, code):
    parameter = r"(const )?[\w:<>]+ [&*]*\w+( = .*)?"
    for match in re.finditer(r"(?:\b(?!if|for|while|switch|return|catch)\w+>?\(|(?<=[(, ])\{(?=[^\n]*,))", code):
        start = match.end() - 1
        end = closing(code, start)
        places = arguments(code, start, end)
        if any(re.fullmatch(parameter, code[a:b], re.S) for a, b in places):
            continue  # the head of a function
        for (a, b), (c, d) in zip(places, places[1:]):
            if text[a:b] != text[c:d]:
                yield a, d, text[c:d] + text[b:c] + text[a:b]


def constants(text, code):
    for match in re.finditer(r"(?<![\w.$])(?:0x[0-9a-fA-F]+|\d+\.?\d*(?:e[+-]?\d+)?)\w*", code):
        if not re.search(r"\)( const)? = $", code[: match.start()]):  # a pure function
            yield *match.span(), f"({match.group()} + 1)"
    for match in re.finditer(r"\b(true|false)\b", code):
        yield *match.span(), "false" if match.group() == "true" else "true"
    for match in re.finditer(r"\"\$*\"", code):
        yield match.end() - 1, match.end() - 1, "~"
    for match in re.finditer(r"'\$+'", code):
        yield *match.span(), "'~'"


OPERATORS = {
    "boundary": boundaries,
    "condition": conditions,
    "statement": statements,
    "arguments": swaps,
    "constant": constants,
}


def mutants_of(file):
    text = (ROOT / file).read_text()
    code = mask(text)
    found = collections.defaultdict(list)
    for kind, operator in OPERATORS.items():
        for start, end, replacement in operator(text, code):
            line = text.count("\n", 0, start) + 1
            first, last = text.rfind("\n", 0, start) + 1, text.find("\n", end)
            old = text[first:last]
            new = text[first:start] + replacement + text[end:last]
            mutated = text[:start] + replacement + text[end:]
            mutant = Mutant(str(file), line, kind, mutated, " ".join(old.split()), " ".join(new.split()))
            found[line, kind].append(mutant)
    return [choice[zlib.crc32(choice[0].old.encode()) % len(choice)] for _, choice in sorted(found.items())]


def read_equivalent():
    """Returns the keys of the listed mutants."""
    keys, file, old = set(), "", ""
    for line in EQUIVALENT.read_text().splitlines():
        if line.startswith("src/"):
            file = line.strip()
        elif line.startswith("- "):
            old = line[2:].strip()
        elif line.startswith("+"):
            keys.add((file, old, line[2:].strip()))
    return keys


# ---- Building --------------------------------------------------------------------------------------------------------


def sh(command, **options):
    return subprocess.run(command, shell=isinstance(command, str), capture_output=True, text=True, **options)


def must(command, **options):
    result = sh(command, **options)
    if result.returncode:
        raise SystemExit(f"mutate: {command}\n{result.stdout[-3000:]}{result.stderr[-3000:]}")
    return result.stdout


class Project:
    """The copy of the checkout, its build, and how each object and program of it is made."""

    def __init__(self, files):
        self.copy_sources()
        must(
            ["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=", "-DTARNWICK_BUILD_EXAMPLES=OFF"]
            + ["-DTARNWICK_BUILD_BENCHMARKS=OFF", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DCMAKE_SKIP_BUILD_RPATH=ON"]
            + ["-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DCMAKE_CXX_FLAGS=-O1 -w -DQT_FORCE_ASSERTS -D_GLIBCXX_ASSERTIONS"]
            + ["-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=gold", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold"]
        )
        must(["cmake", "--build", BUILD, "-j", str(os.cpu_count())])
        compiled = json.loads((BUILD / "compile_commands.json").read_text())
        self.compile = {entry["file"]: entry["command"] for entry in compiled}
        self.object = {file: re.search(r" -o (\S+)", command)[1] for file, command in self.compile.items()}
        listed = json.loads(must(["ctest", "--test-dir", BUILD, "--show-only=json-v1"]))["tests"]
        commands = {test["name"]: test["command"] for test in listed}
        self.tests = {test: command for test, command in commands.items() if command[0].startswith(f"{BUILD}/tests/")}
        sources = {path.stem: path for path in TREE.glob("tests/*/*.cpp")}
        self.sources = {test: sources.get(test, TREE / "tests/surroundings/client.cpp") for test in self.tests}
        self.library_sources = [path for path in self.compile if path.startswith(f"{TREE}/src/")]
        self.link = {name: self.link_command(name) for name in ["Tarnwick", *(self.tests.keys() & sources.keys())]}
        self.includers = collections.defaultdict(set)
        for block in must(["ninja", "-C", BUILD, "-t", "deps"]).split("\n\n"):
            source, *included = re.findall(r"^    (.*)$", block, re.M) or [""]
            for file in included:
                self.includers[os.path.normpath(BUILD / file)].add(source)
        affected = {source for file in files for source in self.affected(file)} & set(self.library_sources)
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            list(pool.map(self.precompile, affected))

    def affected(self, file):
        """Returns the sources to compile anew when a file has changed."""
        copy = str(TREE / file)
        return [copy] if copy in self.compile else sorted(self.includers[copy])

    def precompile(self, source):
        """Compiles what a source includes of Qt and the standard library, and has that read by its compilation."""
        headers = [file for file in self.includers if source in self.includers[file] and file.startswith(str(TREE))]
        texts = "\n".join(pathlib.Path(file).read_text() for file in [source, *headers])
        header = WORK / "precompiled" / f"{pathlib.Path(source).stem}.h"
        includes = sorted(set(re.findall(r"^#include <.*>$", texts, re.M)))
        text = "\n".join([f"// {self.compile[source]}", *includes, ""])
        precompiled = header.with_suffix(".h.gch")
        flags, _, rest = self.compile[source].partition(" -o ")
        if not precompiled.exists() or header.read_text() != text:
            header.parent.mkdir(exist_ok=True)
            header.write_text(text)
            must(f"{flags} -x c++-header -o {precompiled} {header}", cwd=BUILD)
        self.compile[source] = f"{flags} -include {header} -o {rest}"

    def copy_sources(self):
        listed = must(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]).split("\0")
        wanted = {name for name in listed if name and (ROOT / name).is_file()}
        for path in list(TREE.rglob("*")):
            if path.is_file() and str(path.relative_to(TREE)) not in wanted:
                path.unlink()
        for name in wanted:
            source, copy = ROOT / name, TREE / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)

    def link_command(self, target):
        lines = must(["ninja", "-C", BUILD, "-t", "commands", target]).splitlines()
        return [line for line in lines if line.startswith(": && ")][-1]

    def tests_for(self, file):
        """Returns the tests, those of the file's class first, then those of its subsystem, the fast ones ahead."""
        name = pathlib.Path(file).stem.lower()

        def rank(test):
            own = test.split("_")[-1] in name
            return (not own, not self.is_of_subsystem(test, file), self.seconds[test])

        return sorted(self.tests, key=rank)

    def is_of_subsystem(self, test, file):
        subsystem, name = pathlib.Path(file).parts[1], pathlib.Path(file).stem.lower()
        return self.sources[test].parent.name == subsystem or test.split("_")[-1] in (subsystem, name)

    def time_tests(self):
        """Passes all tests without a fault, which also tells how long each may take."""
        self.seconds = {}
        for test in self.tests:
            start = time.monotonic()
            failures = run_test(self.tests[test], BUILD / "src", 300, False)
            self.seconds[test] = time.monotonic() - start
            if failures:
                raise SystemExit(f"mutate: {test} fails without a fault: {failures}")


class Bench:
    """A folder in which mutants are built and tested, one after another."""

    def __init__(self, project, number):
        self.project = project
        self.folder = WORK / f"bench{number}"
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.copytree(TREE / "src", self.folder / "src")

    def build_object(self, source, name):
        """Compiles a source of the copy, with the library's sources of this bench; returns the object, or None.

        What the compiler said stays in self.said.
        """
        output = self.folder / name
        command = self.project.compile[source].replace(f"{TREE}/src", f"{self.folder}/src")
        command = command.replace(f" -o {self.project.object[source]} ", f" -o {output} ")
        result = sh(command + " -fmax-errors=1", cwd=BUILD)
        self.said = result.stderr
        return output if result.returncode == 0 else None

    def build_program(self, target, product, objects):
        command = self.project.link[target]
        for source, built in objects.items():
            command = command.replace(f" {self.project.object[source]} ", f" {built} ")
        command = re.sub(r" -o \S+", f" -o {self.folder / product}", command)
        return sh(command, cwd=BUILD).returncode == 0

    def is_changed(self, source, built):
        return built.read_bytes() != (BUILD / self.project.object[source]).read_bytes()

    def try_mutant(self, mutant, everything):
        file = self.folder / mutant.file
        try:
            file.write_text(mutant.text)
            mutant.outcome = self.outcome(mutant, self.project.affected(mutant.file), everything)
        finally:
            shutil.copy(TREE / mutant.file, file)

    def outcome(self, mutant, affected, everything):
        objects = {}
        for number, source in enumerate(path for path in affected if path in self.project.library_sources):
            objects[source] = self.build_object(source, f"{number}.o")
            if not objects[source]:
                return "invalid"
        differs = any(self.is_changed(source, built) for source, built in objects.items())
        if differs and not self.build_program("Tarnwick", "libTarnwick.so.1", objects):
            return "invalid"
        if not differs:
            shutil.copy(BUILD / "src/libTarnwick.so.1", self.folder / "libTarnwick.so.1")
        for test in self.project.tests_for(mutant.file):
            command = self.project.tests[test]
            source = str(self.project.sources[test])
            if source in affected and test not in self.project.link:
                continue  # a module, which is not made anew here
            if everything and mutant.failures and not self.project.is_of_subsystem(test, mutant.file):
                break
            if source in affected:
                built = self.build_object(source, "test.o")
                if not built and "static assertion failed" in self.said:
                    mutant.failures.append(f"{test}:static_assert")
                    break
                if not built or not self.build_program(test, test, {source: built}):
                    return "invalid"
                if not differs and not self.is_changed(source, built):
                    continue
                command = [self.folder / test, *command[1:]]
            elif not differs:
                continue
            mutant.failures += [f"{test}:{failure}" for failure in self.run(test, command, everything)]
            if mutant.failures and not everything:
                break
            differs = differs or source in affected
        if mutant.failures:
            return "caught"
        return "survived" if differs else "same"

    def run(self, test, command, everything):
        """What fails late, by a hang or a deadline, may be the fault of a busy machine: it has to fail twice."""
        normal = self.project.seconds[test]
        failures = []
        for _ in range(2):
            start = time.monotonic()
            failures = run_test(command, self.folder, 15 + 10 * normal, not everything)
            if not failures or time.monotonic() - start < 2 + normal:
                break
        return failures


def run_test(command, library, limit, stop_early):
    """Returns the functions that failed, "crash" or "hang"; or an empty list."""

    def limits():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
        resource.setrlimit(resource.RLIMIT_CPU, (int(limit), int(limit)))

    variables = {"LD_LIBRARY_PATH": str(library), "QT_QPA_PLATFORM": "offscreen"}
    process = subprocess.Popen(
        command + ["-nocrashhandler"] if "/tst_" in str(command[0]) else command,
        env=os.environ | variables,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        errors="replace",
        preexec_fn=limits,
        cwd=library,
    )
    hung = threading.Event()
    watch = threading.Timer(limit, lambda: (hung.set(), process.kill()))
    watch.start()
    failures = []
    for line in process.stdout:
        if match := re.match(r"(?:FAIL!  |XPASS  |QFATAL ): \w+::(.*?\)) ?", line):
            failures.append(match.group(1))
            if stop_early:
                process.kill()
                break
    process.stdout.close()
    process.wait()
    watch.cancel()
    if hung.is_set():
        failures.append("hang")
    elif process.returncode and (not failures or (process.returncode < 0 and not stop_early)):
        failures.append("crash")
    return failures


# ---- Report ----------------------------------------------------------------------------------------------------------


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate.sh")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--every", type=int, default=1)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("paths", nargs="*", default=["src"])
    options = parser.parse_args()

    started = time.monotonic()
    files = [path for name in options.paths for path in sorted([pathlib.Path(name), *pathlib.Path(name).rglob("*")])]
    mutants = [mutant for file in files if file.suffix in (".cpp", ".h") for mutant in mutants_of(file)]
    equivalent = read_equivalent()
    for listed in equivalent - {mutant.key() for mutant in mutants}:
        if listed[0] in map(str, files):
            print(f"mutate: listed as equivalent, but not found: {' | '.join(listed)}")
    mutants = mutants[:: options.every]
    project = Project({mutant.file for mutant in mutants})
    project.time_tests()

    benches = queue.Queue()
    for number in range(options.jobs):
        benches.put(Bench(project, number))

    def work(mutant):
        if mutant.key() in equivalent:
            mutant.outcome = "listed"
            return mutant
        bench = benches.get()
        bench.try_mutant(mutant, options.all)
        benches.put(bench)
        return mutant

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool, open(WORK / "results.json", "w") as results:
        for mutant in pool.map(work, mutants):
            print(json.dumps(dataclasses.asdict(mutant) | {"text": ""}), file=results, flush=True)
            if mutant.outcome == "survived":
                print(mutant, flush=True)

    counts = collections.Counter(mutant.outcome for mutant in mutants)
    total = counts["caught"] + counts["survived"]
    percent = 100 * counts["caught"] / total if total else 100
    print(
        f"{total + counts['same'] + counts['listed']} faults in {time.monotonic() - started:.0f} s: "
        f"{counts['caught']} caught, {counts['survived']} survived ({percent:.1f} % caught); equivalent: "
        f"{counts['same']} by the object code, {counts['listed']} by the list; {counts['invalid']} others do not build"
    )
    return percent < WANTED


raise SystemExit(main())
