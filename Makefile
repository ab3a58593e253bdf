# The front door. `make test` and `make demo` install what is missing, build and run.
SHELL := /bin/bash
WINE_RUN := scripts/wine-run

.PHONY: all setup linux win64 win32 test test-linux test-win test-win32 demo fuzz bench clean package

all: linux win64

setup:
	@scripts/setup

linux: setup
	cmake --preset linux >/dev/null
	cmake --build --preset linux

win64: setup
	cmake --preset win64 >/dev/null
	cmake --build --preset win64

# The 32-bit DLL, host and driver are compiled (their record layouts are checked by the
# compiler). With 32-bit Wine (QVX_WINE32=1 scripts/setup installs it where the package lists
# allow) everything is built and test-win32 runs the i686 tests and scenarios too.
WINE32 := /usr/lib/wine/wine
win32: setup
	cmake --preset win32 >/dev/null
	if [ -x $(WINE32) ]; then cmake --build build/win32; else cmake --build --preset win32; fi

test-win32: win32
	@if [ -x $(WINE32) ]; then \
	    $(WINE_RUN) --start-server; \
	    ctest --test-dir build/win32 --output-on-failure; rc=$$?; \
	    $(WINE_RUN) --stop-server; exit $$rc; \
	else echo "test-win32: no 32-bit Wine here; the 32-bit build is compiled only"; fi

test-linux: linux
	ctest --preset linux

# One wineserver serves the whole Windows run; it is stopped whatever the outcome.
test-win: win64
	$(WINE_RUN) --start-server
	ctest --preset win64; rc=$$?; $(WINE_RUN) --stop-server; exit $$rc

test: test-linux test-win test-win32

demo: linux win64
	@scripts/setup --demo
	$(WINE_RUN) --start-server
	scripts/demo; rc=$$?; $(WINE_RUN) --stop-server; exit $$rc

fuzz: setup
	scripts/fuzz $(FUZZ_SECONDS)

bench: linux win64
	scripts/bench

# The folder and zip an administrator installs (build/package), then checked: unpacked into a
# fresh Wine prefix, the simulated host loads the plug-in from there through its protk.dat.
package: win64 win32
	scripts/package --check

clean:
	rm -rf build
