# Wrappers around CMake. `make run` and `make test` do the whole set-up on a fresh machine.
BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

.PHONY: all deps build test run bench screens clean

all: build

deps:
	@bash scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	cmake --build $(BUILD) -j$(JOBS)

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j$(JOBS)

run: build
	@[ -f demo/caixa.db ] || $(BUILD)/tolvane --pasta demo iniciar --demo
	$(BUILD)/tolvane --pasta demo

bench: build
	@for b in $(BUILD)/bench/bench_*; do [ -x "$$b" ] && "$$b" || true; done

screens: build
	@mkdir -p $(BUILD)/screens
	QT_QPA_PLATFORM=offscreen $(BUILD)/tolvane telas $(BUILD)/screens

clean:
	rm -rf $(BUILD)
