/* Start-up of the Cortex-M3 build: the vector table the core reads at address 0, and a reset
   handler that sets up RAM and the semihosting console before main. */
#include <stdint.h>
#include <stdio.h>
#include <unistd.h>

/* From the linker script. */
extern uint32_t _sidata, _sdata, _edata, _sbss, _ebss;

int main(void);
void initialise_monitor_handles(void); /* newlib's rdimon: stdin, stdout, stderr */

void reset_handler(void)
{
    const uint32_t* from = &_sidata;
    for (uint32_t* to = &_sdata; to < &_edata;)
        *to++ = *from++;
    for (uint32_t* to = &_sbss; to < &_ebss;)
        *to++ = 0;
    initialise_monitor_handles();
    const int status = main();
    /* _exit rather than exit: nothing is registered to run at exit, and exit would want the
       start-up files' _fini. */
    fflush(stdout);
    _exit(status);
}

/* A fault ends the run with a status of its own instead of leaving QEMU spinning. */
static void fault_handler(void)
{
    _exit(99);
}

/* The 15 entries after the initial stack pointer, which the linker script writes before
   them: reset, NMI, HardFault, MemManage, BusFault, UsageFault, four reserved, SVCall,
   DebugMonitor, reserved, PendSV and SysTick. */
__attribute__((section(".vectors"), used)) void (*const vectors[15])(void) = {reset_handler,
                                                                              fault_handler,
                                                                              fault_handler,
                                                                              fault_handler,
                                                                              fault_handler,
                                                                              fault_handler,
                                                                              0,
                                                                              0,
                                                                              0,
                                                                              0,
                                                                              fault_handler,
                                                                              fault_handler,
                                                                              0,
                                                                              fault_handler,
                                                                              fault_handler};
