void VeltraneGuiPlaceholder() {}
