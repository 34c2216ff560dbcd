# The two set-up commands of the README: `make run` and `make test`.
BUILD_DIR ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
BENCH_DIR ?= build-bench

.PHONY: all deps build run test test-font bench regen-expected

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

# Export speed figures from an optimised build of the core only; not part of `test`.
bench:
	@scripts/install-deps.sh bench
	cmake -S . -B $(BENCH_DIR) -DCMAKE_BUILD_TYPE=Release -DVELTRANE_BUILD_GUI=OFF \
	  -DVELTRANE_BUILD_TESTS=OFF -DVELTRANE_BENCH=ON
	cmake --build $(BENCH_DIR) -j $(JOBS) --target export_bench
	$(BENCH_DIR)/bench/export_bench

# Rewrites tests/export/expected/ from the current exporter; review the diff.
regen-expected: build
	cmake --build $(BUILD_DIR) --target regen-expected

# Regenerates the tests' own font (committed; only needed after changing the script).
test-font:
	@dpkg-query -W -f='$${Status}' python3-fonttools 2>/dev/null | grep -q 'install ok installed' || \
	  { sudo=""; [ "$$(id -u)" -eq 0 ] || sudo=sudo; \
	    $$sudo apt-get -o DPkg::Lock::Timeout=120 update -q && \
	    $$sudo apt-get -o DPkg::Lock::Timeout=120 install -y -q --no-install-recommends python3-fonttools; }
	/usr/bin/python3 tests/fonts/make_test_font.py
