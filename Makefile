# The two set-up commands of the README:
#   make demo   installs what is missing, builds, runs the command-line tool on samples
#   make test   installs what is missing, builds, runs every test, compiles the 32-bit build
BUILD    ?= build
BUILD32  ?= build-i686
JOBS     ?= $(shell nproc)
CMAKE_X64  = cmake -S . -B $(BUILD) -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-w64-x86_64.cmake
CMAKE_I686 = cmake -S . -B $(BUILD32) -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/mingw-w64-i686.cmake \
             -DTESVOR_BUILD_TESTS=OFF -DTESVOR_BUILD_BENCH=OFF
# Programs run through scripts/wine-run, which gives them the display that is set,
# or else one Xvfb that the whole run shares.
WINE_RUN   = scripts/wine-run --build-dir $(BUILD)

.PHONY: all bootstrap build build32 demo test check32 bench clean

all: build

bootstrap:
	@scripts/bootstrap

build: bootstrap
	$(CMAKE_X64)
	cmake --build $(BUILD) -j $(JOBS)

build32: bootstrap
	$(CMAKE_I686)
	cmake --build $(BUILD32) -j $(JOBS)

demo: build
	$(WINE_RUN) $(BUILD)/bin/tesvorutil.exe check-id $$(cat samples/identifiers.txt) || true
	$(WINE_RUN) $(BUILD)/bin/tesvorutil.exe check-email $$(cat samples/emails.txt) || true
	$(WINE_RUN) $(BUILD)/bin/tesvorutil.exe dump Z:$(CURDIR)/samples/settings-dialog.xml
	$(WINE_RUN) $(BUILD)/bin/tesvorutil.exe render Z:$(CURDIR)/samples/settings-dialog.xml \
	    -o Z:$(abspath $(BUILD))/preview-settings-dialog.png
	@echo "picture of the settings dialog: $(BUILD)/preview-settings-dialog.png"
	$(WINE_RUN) $(BUILD)/bin/tesvorutil.exe lint $(addprefix Z:$(CURDIR)/,$(wildcard samples/*.xml))

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)
	$(MAKE) build32

bench: build
	@if [ -x scripts/run-bench ]; then scripts/run-bench $(BUILD); else echo "no benchmarks yet"; fi

clean:
	rm -rf $(BUILD) $(BUILD32)
