# SPDX-License-Identifier: Apache-2.0
"""check_mdb as people run it: what it prints and how it ends."""
import pathlib
import subprocess
import sys
import tempfile


def run(program, *words):
    done = subprocess.run([program, *words], capture_output=True, text=True, timeout=60)
    return done.returncode, done.stdout, done.stderr


def expect(fact, what):
    if not fact:
        sys.exit("FAILED: " + what)


def check_words(check_mdb):
    code, out, _ = run(check_mdb, "--help")
    expect(code == 0 and "usage: check_mdb" in out and "exit status" in out, "--help")
    for words in ([], ["--no-such-word", "x.mdb"], ["a.mdb", "b.mdb"]):
        code, out, err = run(check_mdb, *words)
        expect(code == 2 and not out and "usage" in err, f"words {words}")


def check_files_that_cannot_be_checked(check_mdb, folder):
    code, _, err = run(check_mdb, str(folder / "none.mdb"))
    expect(code == 2 and "none.mdb" in err and "Could not find file" in err, "missing file")
    foreign = folder / "foreign.mdb"
    foreign.write_bytes(b"no database at all" * 1000)
    code, _, err = run(check_mdb, str(foreign))
    expect(code == 2 and "Unrecognized database format" in err, "foreign file")
    (folder / "empty.mdb").touch()
    code, _, err = run(check_mdb, str(folder / "empty.mdb"))
    expect(code == 2 and "Unrecognized database format" in err, "empty file")


def check_shop(check_mdb, shop):
    code, out, err = run(check_mdb, str(shop))
    expect(code == 0 and out.startswith("clean: ") and not err, f"sound file: {out}{err}")
    bytes_ = bytearray(shop.read_bytes())
    bytes_[14 * 4096 + 2] ^= 1  # the free bytes of the first page of catalog rows
    shop.write_bytes(bytes_)
    code, out, _ = run(check_mdb, str(shop))
    expect(code == 1 and "data-page-free-bytes 14 2 " in out and "damaged: " in out, f"damage: {out}")
    code, out, _ = run(check_mdb, "--quiet", str(shop))
    expect(code == 1 and len(out.splitlines()) == 1, f"--quiet: {out}")
    expect(shop.read_bytes() == bytes(bytes_), "the file is as it was")


def main():
    check_mdb, make_shop = sys.argv[1:3]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        check_words(check_mdb)
        check_files_that_cannot_be_checked(check_mdb, folder)
        shop = folder / "shop" / "Kelvaro.mdb"  # make_shop fills a folder
        subprocess.run([make_shop, str(shop.parent)], check=True, capture_output=True, timeout=120)
        check_shop(check_mdb, shop)
    print("check_mdb behaves")


main()
