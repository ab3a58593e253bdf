# The front door. `make test` and `make demo` install what is missing, build and run.
SHELL := /bin/bash
WINE_RUN := scripts/wine-run

.PHONY: all setup linux win64 win32 test test-linux test-win demo fuzz bench clean

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
# compiler) but not run: there is no 32-bit Wine here.
win32: setup
	cmake --preset win32 >/dev/null
	cmake --build --preset win32

test-linux: linux
	ctest --preset linux

# One wineserver serves the whole Windows run; it is stopped whatever the outcome.
test-win: win64
	$(WINE_RUN) --start-server
	ctest --preset win64; rc=$$?; $(WINE_RUN) --stop-server; exit $$rc

test: test-linux test-win win32

demo: linux win64
	$(WINE_RUN) --start-server
	scripts/demo; rc=$$?; $(WINE_RUN) --stop-server; exit $$rc

fuzz: setup
	scripts/fuzz $(FUZZ_SECONDS)

bench: linux win64
	scripts/bench

clean:
	rm -rf build
