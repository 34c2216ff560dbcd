# The two set-up commands of the README: `make run` and `make test`.
BUILD_DIR ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
FUZZ_DIR ?= build-fuzz
FUZZ_SECONDS ?= 60
BENCH_DIR ?= build-bench
ASAN_DIR ?= build-asan
CLANG_DIR ?= build-clang
WEB_DIR ?= build-web
WEB_PORT ?= 8080

.PHONY: all deps build run test test-asan build-clang memcheck fuzz test-font bench bench-preview regen-expected \
        package format web web-serve test-web bench-web

all: build

deps:
	@scripts/install-deps.sh test

build: deps
	cmake -S . -B $(BUILD_DIR) $(CMAKE_FLAGS)
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@scripts/run.sh $(BUILD_DIR)

test: build
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS)

# The whole test suite built with AddressSanitizer and UndefinedBehaviorSanitizer in a
# build dir of its own; fails on any failed test and on any sanitizer report.
test-asan: deps
	scripts/test-asan.sh $(ASAN_DIR) $(JOBS)

# Every target, the tests and the desktop program included, built with clang as well, in a
# build dir of its own: the warnings GCC is built with are errors here, so that code only
# one of the two compilers takes cannot come back. Nothing runs; `test` runs the GCC build.
build-clang:
	@scripts/install-deps.sh clang
	CC=clang CXX=clang++ cmake -S . -B $(CLANG_DIR) -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=-Werror
	cmake --build $(CLANG_DIR) -j $(JOBS)

# The command-line exporter under Valgrind's memcheck with DejaVu Sans at 16 and 256 px
# (also one of the tests of `test`), with memcheck's summaries.
memcheck: build
	scripts/memcheck.sh $(BUILD_DIR)

# Sanitized libFuzzer build of its own (clang), then every fuzz target for FUZZ_SECONDS each.
fuzz:
	@scripts/install-deps.sh fuzz
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_DIR) -DVELTRANE_FUZZ=ON -DVELTRANE_BUILD_GUI=OFF -DVELTRANE_BUILD_TESTS=OFF
	cmake --build $(FUZZ_DIR) -j $(JOBS)
	scripts/fuzz.sh $(FUZZ_DIR) $(FUZZ_SECONDS)

# Speed figures from an optimised build; not part of `test`. The GPOS export is timed beside
# lv_font_conv, which npm installs into the bench build directory.
LV_FONT_CONV = $(BENCH_DIR)/lv_font_conv/node_modules/.bin/lv_font_conv
bench: bench-preview
	@scripts/install-deps.sh bench
	cmake -S . -B $(BENCH_DIR) -DCMAKE_BUILD_TYPE=Release -DVELTRANE_BUILD_GUI=ON -DVELTRANE_BUILD_TESTS=OFF -DVELTRANE_BENCH=ON
	cmake --build $(BENCH_DIR) -j $(JOBS) --target export_bench process_bench cjk_process_bench draw_bench
	$(BENCH_DIR)/bench/export_bench
	test -x $(LV_FONT_CONV) || npm install --prefix $(BENCH_DIR)/lv_font_conv --no-audit --no-fund lv_font_conv@1.5.3
	$(BENCH_DIR)/bench/process_bench $(BENCH_DIR)/veltrane-fontgen-export $(LV_FONT_CONV)
	$(BENCH_DIR)/bench/cjk_process_bench $(BENCH_DIR)/veltrane-fontgen-export $(LV_FONT_CONV) bench/gb2312_level1.txt
	scripts/bench-packed-flash.sh $(BENCH_DIR)/veltrane-fontgen-export $(LV_FONT_CONV)
	$(BENCH_DIR)/bench/draw_bench

# Preview paint times in the real window, under an X server of its own.
bench-preview:
	@scripts/install-deps.sh bench
	cmake -S . -B $(BENCH_DIR) -DCMAKE_BUILD_TYPE=Release -DVELTRANE_BUILD_GUI=ON -DVELTRANE_BUILD_TESTS=OFF -DVELTRANE_BENCH=ON
	cmake --build $(BENCH_DIR) -j $(JOBS) --target preview_bench
	tests/app/gui_session.sh $(BENCH_DIR)/bench/preview_bench

# Two Debian packages (CPack) in $(BUILD_DIR): veltrane-fontgen-export (exporter, its manual
# page, CMake package, example; no GUI toolkit) and veltrane-fontgen (desktop program, its
# manual page, desktop entry, icon; needs the first). cmake/CheckDebianPackages.cmake then
# checks their dependencies.
package: build
	@scripts/install-deps.sh package
	cmake --build $(BUILD_DIR) --target package

# Rewrites tests/cli/expected/ (exports and proof images) and tests/raster/expected/ from the
# current code; review the diff.
regen-expected: build
	cmake --build $(BUILD_DIR) --target regen-expected

# Regenerates the tests' own font (committed; only needed after changing the script).
test-font:
	@scripts/install-deps.sh font
	/usr/bin/python3 tests/fonts/make_test_font.py

# Lays out every tracked C++ file as .clang-format says (clang-format 14). The committed
# exports under expected/ are the generator's output, not ours to lay out.
format:
	@scripts/install-deps.sh format
	git ls-files -z -- '*.cpp' '*.h' | grep -zv '/expected/' | xargs -0 clang-format -i

# The web page: a static site in $(WEB_DIR)/site, the exporter compiled to WebAssembly with
# Debian's emscripten. The libraries it needs are built once from Debian's sources and kept
# in $(WEB_DIR)/prefix.
web:
	@scripts/install-deps.sh web
	scripts/build-web.sh $(WEB_DIR) $(JOBS)

web-serve: web
	node scripts/serve-web.mjs $(WEB_DIR)/site $(WEB_PORT)

# The page in headless Chromium, its exports compared with the native exporter's.
PLAYWRIGHT = $(WEB_DIR)/npm/node_modules/playwright-core
$(PLAYWRIGHT):
	npm install --prefix $(WEB_DIR)/npm --no-audit --no-fund playwright-core@1.65.1

test-web: build web $(PLAYWRIGHT)
	node --test tests/web/

# Export time in the page against the native exporter's whole process, the site's weight
# and the time to the first preview.
bench-web: build web $(PLAYWRIGHT)
	node bench/web_bench.mjs $(WEB_DIR)/site $(BUILD_DIR)/veltrane-fontgen-export
